import {act, dateInput, el, get, labelled, number, post, secondsOf, select, toast, zoneName}
  from './common.js';

let dirty = false;
const shim = fetch('/console/preview.js').then((response) => response.text());
let form = null;
let listener = null;

export function isDirty() {
  return dirty;
}

export function closeEditor() {
  dirty = false;
  form = null;
  if (listener) window.removeEventListener('message', listener);
  listener = null;
}

// A page keeps its standards mode only when its doctype stands first.
async function framed(text) {
  const doctype = /^\s*<!doctype[^>]*>/i.test(text) ? '<!doctype html>' : '';
  return `${doctype}<script>${await shim}</script>${text}`;
}

const kSizes = [
  ['390x700', 'Phone, upright'], ['700x390', 'Phone, across'], ['1024x640', 'Desktop'],
];

function makePreview() {
  const frame = el('iframe', {sandbox: 'allow-scripts', title: 'The page, live'});
  const box = el('div', {class: 'frame'}, frame);
  const answer = el('p', {class: 'answer', role: 'status'}, 'It has posted nothing yet.');
  const size = select(kSizes, '390x700', {'aria-label': 'Size of the preview'});
  const fit = () => {
    const [width, height] = size.value.split('x').map(Number);
    const scale = Math.min(1, box.clientWidth / width);
    frame.style.width = `${width}px`;
    frame.style.height = `${height}px`;
    frame.style.transform = `scale(${scale})`;
    box.style.height = `${height * scale}px`;
  };
  size.addEventListener('change', fit);
  new ResizeObserver(fit).observe(box);
  listener = (event) => {
    if (event.source !== frame.contentWindow || !event.data || !event.data.handler) return;
    answer.textContent = `Posted to ${event.data.handler}: ${String(event.data.text).slice(0, 500)}`;
  };
  window.addEventListener('message', listener);
  let latest = 0;
  const show = async (text) => {
    latest += 1;
    const own = latest;
    const {address} = await post('preview', {page_text: await framed(text)});
    if (own === latest) frame.src = address;
  };
  return {
    show,
    element: el('section', {class: 'preview', 'aria-label': 'Preview'},
      el('div', {class: 'head'}, el('h2', {}, 'Preview'), size), box, answer),
  };
}

function fieldsOf(entry) {
  const input = (name, more) => el('input', Object.assign(
    {name, value: entry[name] === undefined ? '' : String(entry[name]), autocomplete: 'off'}, more));
  const date = (name) => el('input', {type: 'datetime-local', name, value: dateInput(Number(entry[name]))});
  const whole = {type: 'number', step: 1};
  const value = (name, usual) => (entry[name] === undefined ? usual : entry[name]);
  const zoneHint = `In ${zoneName()}. Empty means no bound.`;
  return [
    el('fieldset', {}, el('legend', {}, 'Where'),
      labelled('Number (pop_id)', input('pop_id', whole)),
      labelled('Scene', input('scene')),
      labelled('Scene type', input('scene_type', whole)),
      labelled('Channels', input('valid_platform', {placeholder: 'any'}), 'Numbers with commas between.')),
    el('fieldset', {}, el('legend', {}, 'When'),
      labelled('Shown from', date('valid_time'), zoneHint),
      labelled('Shown until', date('expire_time'), zoneHint),
      labelled('Published', date('publish_time'), 'The later one wins over what a game ships.'),
      labelled('Priority', input('priority', whole))),
    el('fieldset', {}, el('legend', {}, 'How'),
      labelled('Kind', select([[1, 'Ordinary'], [2, 'Game page']], value('pop_type', 1), {name: 'pop_type'})),
      labelled('How often', select([[1, 'Once'], [2, 'Every time'], [3, 'When the service says so']],
        value('pop_freq', 1), {name: 'pop_freq'})),
      labelled('Condition (check_url)', input('check_url', {placeholder: '{{base}}/check/NAME'})),
      labelled('Answers go to (report_url)', input('report_url', {placeholder: '{{base}}/report/NAME'}))),
  ];
}

const kNumbers = ['pop_id', 'scene_type', 'priority', 'pop_type', 'pop_freq'];
const kTexts = ['scene', 'valid_platform', 'check_url', 'report_url', 'page', 'uri'];
const kDates = ['valid_time', 'expire_time', 'publish_time'];

// Members that the form does not know stay as they are, and so do values that were not touched.
function entryOf(before) {
  const entry = Object.assign({}, before);
  const set = (name, value, empty) => {
    if (value === empty && before[name] === undefined) return;
    if (String(before[name]) !== String(value)) entry[name] = value;
  };
  for (const name of kNumbers) if (form.elements[name]) set(name, number(form.elements[name].value), 0);
  for (const name of kTexts) if (form.elements[name]) set(name, form.elements[name].value.trim(), '');
  for (const name of kDates) {
    const typed = form.elements[name].value;
    // An input knows minutes; seconds that nobody touched are kept.
    if (typed !== dateInput(Number(before[name]))) set(name, secondsOf(typed), 0);
  }
  return entry;
}

function showProblems(place, heading, problems) {
  for (const bad of form.querySelectorAll('[aria-invalid]')) bad.removeAttribute('aria-invalid');
  if (problems.length === 0) {
    place.replaceChildren();
    return;
  }
  const order = problems.slice().sort((left, right) =>
    (right.severity === 'error') - (left.severity === 'error'));
  place.replaceChildren(el('h2', {}, heading), el('ul', {}, order.map((problem) => {
    const name = problem.path.split('/').pop();
    if (problem.severity === 'error' && form.elements[name]) {
      form.elements[name].setAttribute('aria-invalid', 'true');
    }
    return el('li', {class: problem.severity}, el('b', {}, problem.severity + ' '),
      name ? el('code', {}, name) : null, ' ', problem.message);
  })));
}

// What the checker says of this popup, out of what it says of the whole document.
function problemsOf(told, id) {
  return (told.problems || []).map((problem) => {
    const found = /^\/popups\/(\d+)(.*)$/.exec(problem.path);
    if (!found) return problem;
    const own = (told.popups || [])[Number(found[1])] === id;
    return Object.assign({}, problem, {
      path: found[2], own,
      message: own ? problem.message : `(another live popup, entry ${found[1]}) ${problem.message}`,
    });
  }).filter((problem) => problem.severity === 'error' || problem.own);
}

function pageFields(popup, text, changed) {
  const {entry} = popup;
  if (entry.page === undefined && entry.uri !== undefined) {
    return [labelled('Address of the page (uri)', el('input', {name: 'uri', value: entry.uri}))];
  }
  const area = el('textarea', {name: 'page_text', rows: 14, spellcheck: 'false', class: 'code'});
  area.value = text;
  area.addEventListener('input', changed);
  const file = el('input', {type: 'file', accept: '.html,text/html'});
  file.addEventListener('change', act(async () => {
    if (file.files.length === 0) return;
    area.value = await file.files[0].text();
    area.dispatchEvent(new Event('input', {bubbles: true}));
  }));
  return [
    labelled('File name', el('input', {name: 'page', value: entry.page || ''})),
    labelled('Page (HTML)', area),
    labelled('or take a file', file),
  ];
}

function actionsOf(popup, hooks, problems, save) {
  const isLive = popup.live !== undefined;
  const then = (path, said) => act(async () => {
    const told = await post(`popups/${popup.id}/${path}`, {});
    closeEditor();
    toast(said);
    await (told.id ? hooks.choose(told.id) : hooks.refresh());
  });
  const publish = act(async () => {
    if (dirty) await save();
    try {
      await post('publish', {ids: [popup.id]});
    } catch (error) {
      if (error.status !== 409) throw error;
      await hooks.refresh();
      const place = document.querySelector('.editor .problems');
      const told = problemsOf(error.told, popup.id);
      if (told.length === 0) throw error;
      showProblems(place, 'It cannot be published', told);
      place.focus();
      return;
    }
    closeEditor();
    toast('Published. Games get it at their next start.');
    await hooks.refresh();
  });
  const button = (text, onclick, more) =>
    el('button', Object.assign({type: 'button', class: 'quiet', onclick}, more), text);
  return el('div', {class: 'actions'},
    button('Save', act(async () => {
      await save();
      toast('Saved.');
      await hooks.refresh();
    }), {name: 'save'}),
    button(popup.state === 'paused' ? 'Publish again' : 'Publish', publish,
      {class: 'main', name: 'publish'}),
    button('Duplicate', then('duplicate', 'Here is the copy.'), {name: 'duplicate'}),
    isLive ? button('Pause', then('pause', 'Paused. Games lose it at their next start.'), {name: 'pause'}) : null,
    isLive && popup.state !== 'ended' ? button('End now', then('end', 'Ended.'), {name: 'end'}) : null,
    isLive ? null : button('Delete', then('delete', 'Deleted.'), {name: 'delete', class: 'quiet danger'}));
}

export async function openEditor(place, popup, hooks) {
  closeEditor();
  const {text} = await get(`popups/${popup.id}/page`);
  const preview = makePreview();
  let timer = 0;
  let pageChanged = false;
  const onPage = () => {
    pageChanged = true;
    window.clearTimeout(timer);
    timer = window.setTimeout(act(() => preview.show(form.elements.page_text.value)), 250);
  };
  const problems = el('div', {class: 'problems', tabindex: '-1', role: 'alert'});
  form = el('form', {}, problems, fieldsOf(popup.entry),
    el('fieldset', {class: 'page'}, el('legend', {}, 'Page'), pageFields(popup, text, onPage)));
  const save = async () => {
    const members = {version: popup.version, entry: entryOf(popup.entry)};
    if (pageChanged) members.page_text = form.elements.page_text.value;
    await post(`popups/${popup.id}`, members);
    dirty = false;
  };
  form.addEventListener('input', () => {
    dirty = true;
  });
  form.addEventListener('submit', (event) => event.preventDefault());
  const head = el('div', {class: 'head'},
    el('button', {type: 'button', class: 'quiet back', onclick: hooks.close}, '← All popups'),
    el('h1', {tabindex: '-1'}, popup.entry.scene || '(no scene)', el('small', {}, ` #${popup.entry.pop_id || '–'}`)),
    el('span', {class: 'chip ' + popup.state}, popup.state));
  place.replaceChildren(el('section', {class: 'editor', 'data-id': popup.id, 'aria-label': 'The chosen popup'},
    head, actionsOf(popup, hooks, problems, save),
    el('div', {class: 'work'}, form, preview.element)));
  const live = (popup.live_problems || []).filter((problem) => problem.severity === 'error');
  showProblems(problems, 'What the checker says', live.length > 0 && !popup.changed ? live : popup.problems);
  if (form.elements.page_text) await preview.show(text);
  else preview.element.replaceChildren(el('p', {class: 'hint'}, 'A web page is not loaded here.'));
}
