import {act, el, get, setZone, takeToken, toast, token, zone, zones, dateText} from './common.js';
import {showAnswers, leaveAnswers} from './answers.js';
import {showControls} from './controls.js';
import {showPopups, mayLeave} from './popups.js';
import {showWhy} from './why.js';

const content = document.getElementById('content');

async function showHistory(place) {
  const {history} = await get('history');
  const rows = history.map((line) => el('tr', {},
    el('td', {}, dateText(line.time)), el('td', {}, line.who), el('td', {}, line.what),
    el('td', {class: 'wide'}, line.details)));
  place.replaceChildren(
    el('h1', {}, 'History'),
    el('section', {class: 'panel scroll', tabindex: '0', 'aria-label': 'Who changed what when'},
      rows.length === 0 ? el('p', {}, 'Nothing has happened yet.') : el('table', {},
        el('thead', {}, el('tr', {}, ['When', 'Who', 'What', 'Which'].map(
          (text) => el('th', {scope: 'col'}, text)))),
        el('tbody', {}, rows))));
}

const sections = {
  popups: ['Popups', showPopups],
  answers: ['Answers', showAnswers],
  why: ['Why nothing?', showWhy],
  controls: ['Controls', showControls],
  history: ['History', showHistory],
};
let shown = '';

async function show() {
  const key = sections[window.location.hash.slice(1)] ? window.location.hash.slice(1) : 'popups';
  if (shown === 'popups' && key !== 'popups' && !mayLeave()) {
    window.history.replaceState(null, '', '#popups');
    return;
  }
  leaveAnswers();
  shown = key;
  document.title = `${sections[key][0]} · console`;
  for (const link of document.querySelectorAll('.tabs a')) {
    if (link.hash === '#' + key) link.setAttribute('aria-current', 'page');
    else link.removeAttribute('aria-current');
  }
  try {
    await sections[key][1](content);
  } catch (error) {
    content.replaceChildren(el('div', {class: 'panel notice', role: 'alert'},
      el('h1', {}, 'That did not work'), el('p', {}, error.message),
      el('button', {onclick: show}, 'Try again')));
  }
}

function start() {
  const who = document.getElementById('who');
  who.value = window.localStorage.getItem('console-who') || '';
  who.addEventListener('change', () => window.localStorage.setItem('console-who', who.value));
  const zoneBox = document.getElementById('zone');
  zoneBox.append(...zones().map(([key, text]) => el('option', {value: key}, text)));
  zoneBox.value = zone();
  zoneBox.addEventListener('change', act(() => {
    if (shown === 'popups' && !mayLeave()) {
      zoneBox.value = zone();
      return;
    }
    setZone(zoneBox.value);
    show();
  }));
  window.addEventListener('hashchange', () => {
    // The address of a later start of the service was opened in the same window.
    if (window.location.hash.startsWith('#token=')) takeToken();
    show();
  });
  show();
}

takeToken();
if (token()) {
  start();
} else {
  content.replaceChildren(el('div', {class: 'panel notice', role: 'alert'},
    el('h1', {}, 'This is the wrong address'),
    el('p', {}, 'Open the one that zovkpopup-service printed when it started, with the token at ' +
      'its end. Each start of the service has another.')));
}
window.addEventListener('unhandledrejection', (event) => toast(String(event.reason), true));
