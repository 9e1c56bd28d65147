import {act, dateInput, el, labelled, number, post, secondsOf, zoneName} from './common.js';

function verdicts(told) {
  return el('table', {},
    el('thead', {}, el('tr', {}, ['Shown', 'Popup', 'Scene', 'Verdict', 'Why'].map(
      (text) => el('th', {scope: 'col'}, text)))),
    el('tbody', {}, told.popups.map((popup) => el('tr', {},
      el('td', {}, popup.rank > 0 ? `${popup.rank}.` : '–'),
      el('td', {}, String(popup.pop_id)),
      el('td', {}, popup.scene),
      el('td', {}, el('span', {class: 'chip ' + (popup.verdict === 'passed' ? 'live' : 'ended')},
        popup.verdict.split('_').join(' '))),
      el('td', {class: 'wide'}, popup.sentence)))));
}

export async function showWhy(content) {
  const scene = el('input', {name: 'scene', autocomplete: 'off'});
  const type = el('input', {name: 'scene_type', type: 'number', step: 1, min: 0, value: 0});
  const channel = el('input', {name: 'channel', type: 'number', step: 1, value: 1});
  const moment = el('input', {
    name: 'moment', type: 'datetime-local', value: dateInput(Math.floor(Date.now() / 1000)),
  });
  const result = el('section', {class: 'panel result', 'aria-live': 'polite', 'aria-label': 'The explanation'},
    el('p', {class: 'hint'}, 'Say what the game asks for, and for whom.'));
  const ask = act(async () => {
    const told = await post('explain', {
      scene: scene.value.trim(), scene_type: number(type.value), channel: number(channel.value),
      moment: secondsOf(moment.value),
    });
    result.replaceChildren(el('p', {class: 'sentence'}, told.sentence),
      told.popups.length === 0 ? '' : el('div', {class: 'scroll', tabindex: '0', role: 'region',
        'aria-label': 'Each popup'}, verdicts(told)));
  });
  content.replaceChildren(
    el('h1', {}, 'Why does this player see nothing?'),
    el('form', {class: 'panel grid', onsubmit: ask},
      labelled('Scene', scene, 'Empty: the game asks by scene type.'),
      labelled('Scene type', type, 'Counts only without a scene.'),
      labelled('Login channel', channel),
      labelled('Moment', moment, `In ${zoneName()}.`),
      el('button', {class: 'main'}, 'Explain')),
    result,
    el('p', {class: 'hint'}, 'The library itself answers, for what is live now and a player who has ' +
      'seen nothing yet. Conditions are not asked.'));
}
