// What all parts of the console share: the token, calls, elements, dates.

const kTokenKey = 'console-token';

// The token comes behind the # of the address, which no server ever sees, and is taken out of sight.
export function takeToken() {
  const found = /^#token=([0-9a-f]+)$/.exec(window.location.hash);
  if (found) {
    window.sessionStorage.setItem(kTokenKey, found[1]);
    window.history.replaceState(null, '', '/#popups');
  }
  return window.sessionStorage.getItem(kTokenKey);
}

export function token() {
  return window.sessionStorage.getItem(kTokenKey) || '';
}

export class CallError extends Error {
  constructor(status, told) {
    super(told.message || `the service answered ${status}`);
    this.status = status;
    this.told = told;
  }
}

async function fetched(path, options) {
  const headers = {'X-Console-Token': token()};
  let response;
  try {
    response = await fetch('/console/api/' + path, Object.assign({headers}, options));
  } catch (error) {
    throw new CallError(0, {message: 'The service does not answer. Does it still run?'});
  }
  if (response.ok) return response;
  let told = {};
  try {
    told = await response.json();
  } catch (error) {
    told = {};
  }
  throw new CallError(response.status, told);
}

export async function get(path) {
  return (await fetched(path)).json();
}

export async function getBlob(path) {
  return (await fetched(path)).blob();
}

export async function post(path, members) {
  const body = Object.assign({who: name()}, members);
  return (await fetched(path, {method: 'POST', body: JSON.stringify(body)})).json();
}

export function name() {
  return document.getElementById('who').value.trim();
}

// An element with attributes and children. Texts are texts, never markup.
export function el(tag, attributes, ...children) {
  const element = document.createElement(tag);
  for (const [key, value] of Object.entries(attributes || {})) {
    if (key.startsWith('on')) {
      element.addEventListener(key.slice(2), value);
    } else if (value === true) {
      element.setAttribute(key, '');
    } else if (value !== false && value !== null && value !== undefined) {
      element.setAttribute(key, value);
    }
  }
  element.append(...children.flat().filter((child) => child !== null && child !== undefined));
  return element;
}

let field = 0;
// A label, its input and, below, what there is to say about it.
export function labelled(text, input, hint) {
  field += 1;
  input.id = input.id || `field-${field}`;
  const parts = [el('label', {for: input.id}, text), input];
  if (hint) {
    input.setAttribute('aria-describedby', input.id + '-hint');
    parts.push(el('p', {class: 'hint', id: input.id + '-hint'}, hint));
  }
  return el('div', {class: 'field'}, parts);
}

export function select(values, chosen, attributes) {
  return el('select', attributes,
    values.map(([value, text]) =>
      el('option', {value, selected: String(value) === String(chosen)}, text)));
}

export function toast(text, bad) {
  const place = document.getElementById('toast');
  place.textContent = text;
  place.classList.toggle('bad', Boolean(bad));
  place.classList.add('shown');
  window.clearTimeout(toast.timer);
  toast.timer = window.setTimeout(() => place.classList.remove('shown'), bad ? 9000 : 4000);
}

let last = Promise.resolve();

// Runs what a control asks for once all that was asked for before is done, and says what went
// wrong. To publish at once after saving would otherwise save the same change again, which the
// service takes for somebody else's.
export function act(work) {
  return (event) => {
    if (event && event.preventDefault) event.preventDefault();
    last = last.then(() => work(event)).catch((error) => toast(error.message, true));
    return last;
  };
}

const kZoneKey = 'console-zone';
const localZone = Intl.DateTimeFormat().resolvedOptions().timeZone || 'local time';

export function zones() {
  return localZone === 'UTC' ? [['utc', 'UTC']] : [['local', localZone], ['utc', 'UTC']];
}

export function zone() {
  const kept = window.localStorage.getItem(kZoneKey);
  return zones().some(([key]) => key === kept) ? kept : zones()[0][0];
}

export function setZone(key) {
  window.localStorage.setItem(kZoneKey, key);
}

export function zoneName() {
  return zones().find(([key]) => key === zone())[1];
}

export function dateText(seconds) {
  if (!seconds) return '';
  return new Date(seconds * 1000).toLocaleString(undefined, {
    dateStyle: 'medium', timeStyle: 'short',
    timeZone: zone() === 'utc' ? 'UTC' : undefined,
  });
}

const two = (part) => String(part).padStart(2, '0');

// Seconds since 1970 as an input for dates takes them, in the chosen zone; and back.
export function dateInput(seconds) {
  if (!seconds) return '';
  const date = new Date(seconds * 1000);
  if (zone() === 'utc') return date.toISOString().slice(0, 16);
  return `${date.getFullYear()}-${two(date.getMonth() + 1)}-${two(date.getDate())}` +
    `T${two(date.getHours())}:${two(date.getMinutes())}`;
}

export function secondsOf(input) {
  if (!input) return 0;
  return Math.floor(new Date(zone() === 'utc' ? input + 'Z' : input).getTime() / 1000);
}

export function number(text) {
  const value = Number(text);
  return Number.isSafeInteger(value) ? value : 0;
}
