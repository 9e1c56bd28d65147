import {act, dateText, el, get, labelled, post, select, toast} from './common.js';

const kFaults = [
  ['delay', 'comes late (milliseconds)'], ['drop', 'connection closes'],
  ['truncate', 'ends too early (bytes)'], ['slow-drip', 'comes slowly (bytes a second)'],
  ['status-500', 'server error'], ['empty', 'is empty'], ['not-json', 'is no JSON'],
  ['huge', 'is huge (megabytes)'], ['redirect-loop', 'redirects for ever'],
];
const kPaths = ['/popup/get_info', '/pages/', '/check/', '/report'];

function faultPanel(controls, refresh) {
  const path = el('input', {name: 'path', list: 'paths', value: '/popup/get_info', autocomplete: 'off'});
  const kind = select(kFaults, 'delay', {name: 'fault'});
  const arg = el('input', {name: 'arg', inputmode: 'numeric', autocomplete: 'off', value: '1500'});
  const times = el('input', {name: 'times', type: 'number', min: 0, value: 0});
  kind.addEventListener('change', () => {
    arg.value = kind.value === 'delay' ? '1500' : '';
  });
  const set = act(async () => {
    await post('faults', {path: path.value.trim(), fault: kind.value, arg: arg.value.trim(), times: Number(times.value)});
    toast('The fault is on.');
    await refresh();
  });
  const rows = controls.faults.map((fault) => el('li', {},
    el('span', {}, el('code', {}, fault.path), ` ${fault.fault}`,
      fault.number ? ` ${fault.number}` : '', el('small', {}, ` · spoilt ${fault.spoilt}`,
        fault.times ? ` of ${fault.times}` : '')),
    el('button', {
      type: 'button', class: 'quiet', role: 'switch', 'aria-checked': 'true',
      'aria-label': `Fault for ${fault.path}`,
      onclick: act(async () => {
        await post('faults', {path: fault.path, fault: 'none'});
        toast('The fault is off.');
        await refresh();
      }),
    }, 'On')));
  return el('section', {class: 'panel'}, el('h2', {}, 'Faults'),
    el('p', {class: 'hint'}, 'Spoil the answers for a path, to see what the game makes of it.'),
    rows.length === 0 ? el('p', {}, 'No fault is on.') : el('ul', {class: 'switches'}, rows),
    el('form', {class: 'grid', onsubmit: set},
      el('datalist', {id: 'paths'}, kPaths.map((value) => el('option', {value}))),
      labelled('Path', path), labelled('The answer', kind), labelled('Amount', arg),
      labelled('Times', times, '0 is for all.'),
      el('button', {class: 'main'}, 'Switch on')));
}

function checkPanel(controls, refresh) {
  const set = (name, answer) => act(async () => {
    await post('checks', {name, answer});
    await refresh();
  });
  const rows = Object.entries(controls.checks).map(([name, answer]) => {
    const need = answer !== null && typeof answer === 'object' ? answer.need_popup : answer;
    const on = String(need) === '1' || need === true;
    const flipped = answer !== null && typeof answer === 'object'
      ? Object.assign({}, answer, {need_popup: on ? 0 : 1}) : (on ? 0 : 1);
    return el('li', {},
      el('span', {}, el('code', {}, name), answer !== null && typeof answer === 'object' && answer.extra
        ? el('small', {}, ` extra ${JSON.stringify(answer.extra)}`) : null),
      el('button', {
        type: 'button', class: 'quiet', role: 'switch', 'aria-checked': String(on),
        'aria-label': `Condition ${name}`, onclick: set(name, flipped),
      }, on ? 'Yes' : 'No'),
      el('button', {type: 'button', class: 'quiet', 'aria-label': `Forget condition ${name}`,
        onclick: set(name, null)}, 'Forget'));
  });
  const name = el('input', {name: 'name', autocomplete: 'off', required: true});
  return el('section', {class: 'panel'}, el('h2', {}, 'Conditions'),
    el('p', {class: 'hint'}, 'What {{base}}/check/NAME answers to games that ask whether to show a popup.'),
    rows.length === 0 ? el('p', {}, 'There is none; a name that is not here is answered with no.')
      : el('ul', {class: 'switches'}, rows),
    el('form', {class: 'grid', onsubmit: act(async () => {
      await post('checks', {name: name.value.trim(), answer: 1});
      await refresh();
    })}, labelled('Name', name), el('button', {class: 'main'}, 'Add with yes')));
}

function refusalPanel(refusals) {
  const rows = refusals.map((refusal) => el('li', {},
    el('details', {}, el('summary', {}, el('b', {}, refusal.message), ' ', el('code', {}, refusal.path),
      el('small', {}, ` ${dateText(refusal.time)}`)),
    refusal.signed_text ? el('dl', {}, el('dt', {}, 'What the service signed'),
      el('dd', {}, el('pre', {tabindex: '0'}, refusal.signed_text)),
      el('dt', {}, 'The signature that came'), el('dd', {}, el('code', {}, refusal.sig || '(none)')),
      el('dt', {}, 'The rule'), el('dd', {}, refusal.rule)) : null)));
  return el('section', {class: 'panel'}, el('h2', {}, 'Refused requests'),
    rows.length === 0 ? el('p', {}, 'None since the service started.') : el('ul', {class: 'refusals'}, rows));
}

export async function showControls(content) {
  const refresh = async () => {
    const [controls, told] = await Promise.all([get('controls'), get('refusals')]);
    content.replaceChildren(el('h1', {}, 'Controls'),
      el('div', {class: 'panels'}, faultPanel(controls, refresh), checkPanel(controls, refresh),
        refusalPanel(told.refusals)));
  };
  await refresh();
}
