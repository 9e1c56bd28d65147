import {act, el, get, getBlob, labelled, number, secondsOf, token, toast, zone, zoneName}
  from './common.js';

let events = null;
let charts = [];
let timer = 0;

export function leaveAnswers() {
  if (events) events.close();
  events = null;
  window.clearTimeout(timer);
  for (const chart of charts) chart.destroy();
  charts = [];
}

// The library that draws is the system's and may be missing: then there are the tables.
function plotLibrary() {
  if (window.Chart) return Promise.resolve(true);
  return new Promise((done) => {
    document.head.append(el('script', {
      src: '/console/plots.js', onload: () => done(true), onerror: () => done(false),
    }));
  });
}

function colour(name) {
  return window.getComputedStyle(document.documentElement).getPropertyValue(name).trim();
}

function plot(canvas, groups, label, lying) {
  const short = (text) => (text.length > 24 ? text.slice(0, 23) + '…' : text || '(no text)');
  charts.push(new window.Chart(canvas, {
    type: 'bar',
    data: {
      labels: groups.map((group) => short(group.name)),
      datasets: [{label, data: groups.map((group) => group.count), backgroundColor: colour('--plot'),
        borderRadius: 4, maxBarThickness: 36}],
    },
    options: {
      indexAxis: lying ? 'y' : 'x',
      animation: false,
      responsive: true,
      maintainAspectRatio: false,
      plugins: {legend: {display: false}},
      scales: {
        x: {ticks: {color: colour('--text'), precision: 0}, grid: {color: colour('--line'), display: Boolean(lying)}, beginAtZero: true},
        y: {ticks: {color: colour('--text'), precision: 0}, grid: {color: colour('--line'), display: !lying}, beginAtZero: true},
      },
    },
  }));
}

function figure(heading, groups, drawn, lying) {
  const total = groups.reduce((sum, group) => sum + group.count, 0);
  const best = groups.slice().sort((left, right) => right.count - left.count)[0];
  const canvas = el('canvas', {role: 'img', 'aria-label': best
    ? `${heading}: ${groups.length} bars, ${total} answers, most for ${best.name || 'no text'}, ${best.count}` : heading});
  const table = el('table', {}, el('caption', {}, heading),
    el('tbody', {}, groups.map((group) => el('tr', {}, el('th', {scope: 'row', class: 'wide'}, group.name || '(no text)'),
      el('td', {}, String(group.count))))));
  const element = el('section', {class: 'panel plot'}, el('h2', {}, heading),
    groups.length === 0 ? el('p', {class: 'hint'}, 'No answers yet.') : null,
    drawn && groups.length > 0 ? el('div', {class: 'canvas'}, canvas) : null,
    groups.length > 0 ? el('details', {open: !drawn}, el('summary', {}, 'As a table'), table) : null);
  return {element, draw: () => drawn && groups.length > 0 && plot(canvas, groups, heading, lying)};
}

async function download(path, name) {
  const link = el('a', {href: URL.createObjectURL(await getBlob(path)), download: name});
  link.click();
  window.setTimeout(() => URL.revokeObjectURL(link.href), 1000);
}

function latestList(answers) {
  return el('section', {class: 'panel'}, el('h2', {}, 'Latest'),
    answers.length === 0 ? el('p', {class: 'hint'}, 'They appear here as they come in.')
      : el('div', {class: 'scroll', tabindex: '0', role: 'region', 'aria-label': 'Latest answers'}, el('table', {},
        el('thead', {}, el('tr', {}, ['When', 'Popup', 'Scene', 'Text', 'Player'].map(
          (text) => el('th', {scope: 'col'}, text)))),
        el('tbody', {}, answers.slice(0, 30).map((answer) => el('tr', {},
          el('td', {}, new Date(answer.received).toLocaleString(undefined, {
            dateStyle: 'short', timeStyle: 'medium', timeZone: zone() === 'utc' ? 'UTC' : undefined})),
          el('td', {}, answer.pop_id), el('td', {}, answer.scene),
          el('td', {class: 'wide'}, answer.msg.slice(0, 300)),
          el('td', {}, answer.install_id.slice(0, 8))))))));
}

export async function showAnswers(content) {
  leaveAnswers();
  const drawn = await plotLibrary();
  const popup = el('input', {name: 'popup', type: 'number', min: 0, placeholder: 'all'});
  const from = el('input', {name: 'from', type: 'datetime-local'});
  const until = el('input', {name: 'until', type: 'datetime-local'});
  const text = el('input', {name: 'text', type: 'search', maxlength: 200, autocomplete: 'off'});
  const results = el('div', {class: 'results'});
  const count = el('p', {class: 'count', role: 'status'});
  const live = el('span', {class: 'chip draft'}, 'Connecting');
  const query = () => '?' + new URLSearchParams({
    popup: number(popup.value), from: secondsOf(from.value), until: secondsOf(until.value),
    text: text.value, zone: zone(),
  }).toString();
  const refresh = async () => {
    const totals = await get('answers' + query());
    for (const chart of charts) chart.destroy();
    charts = [];
    const open = Array.from(results.querySelectorAll('details')).map((details) => details.open);
    const named = (group) => Object.assign({name: `#${group.key} ${group.scene}`.trim()}, group);
    const keyed = (group) => Object.assign({name: group.key}, group);
    const figures = [
      figure('By popup', totals.by_popup.map(named), drawn),
      figure('By day', totals.by_day.map(keyed).reverse(), drawn),
      figure('By answer', totals.by_text.map(keyed), drawn, true),
    ];
    count.textContent = `${totals.count} ${totals.count === 1 ? 'answer' : 'answers'}`;
    results.replaceChildren(el('div', {class: 'plots'}, figures.map((one) => one.element)),
      latestList(totals.latest));
    results.querySelectorAll('details').forEach((details, index) => {
      if (open[index]) details.open = true;
    });
    for (const one of figures) one.draw();
  };
  const soon = () => {
    window.clearTimeout(timer);
    timer = window.setTimeout(act(refresh), 200);
  };
  const state = (name, said) => {
    live.className = 'chip ' + name;
    live.textContent = said;
  };
  content.replaceChildren(
    el('div', {class: 'head'}, el('h1', {}, 'Answers'), live, count),
    el('form', {class: 'panel grid', oninput: soon, onsubmit: act(refresh)},
      labelled('Popup number', popup), labelled('From', from, `In ${zoneName()}.`),
      labelled('Until', until, `In ${zoneName()}.`), labelled('Text has', text),
      el('div', {class: 'actions'},
        el('button', {type: 'button', class: 'quiet', onclick: act(() => download('answers.csv' + query(), 'answers.csv'))}, 'CSV'),
        el('button', {type: 'button', class: 'quiet', onclick: act(() => download('answers.json' + query(), 'answers.json'))}, 'JSON'))),
    drawn ? '' : el('p', {class: 'notice'}, 'The plotting library (package libjs-chart.js) is not installed; the tables say the same.'),
    results);
  events = new EventSource('/console/events?token=' + token());
  events.addEventListener('open', () => state('live', 'Live'));
  events.addEventListener('error', () => state('ended', 'Not connected'));
  events.addEventListener('report', () => {
    toast('An answer came in.');
    soon();
  });
  await refresh();
}
