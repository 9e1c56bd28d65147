import {act, dateText, el, get, post, select, toast, zoneName} from './common.js';
import {openEditor, closeEditor, isDirty} from './editor.js';

const kStates = {
  draft: 'Draft', scheduled: 'Scheduled', live: 'Live', paused: 'Paused', ended: 'Ended',
  broken: 'Broken',
};
const kStarters = [
  ['announcement', 'Announcement'], ['event', 'Event'], ['reward', 'Reward'], ['survey', 'Survey'],
  ['policy', 'Policy'],
];
let place = null;
let starter = kStarters[0][0];
let overview = null;
let chosen = 0;

export function mayLeave() {
  return !isDirty() || window.confirm('Leave without saving what you changed?');
}

export function kindOf(entry) {
  if (entry.scene === 'ZOVKPolicy') return 'policy';
  if (entry.scene === 'ZOVKPolicy_Permission') return 'permission';
  return String(entry.pop_type) === '2' ? 'game page' : 'ordinary';
}

function why(popup) {
  const problems = (popup.live_problems || popup.problems).filter((p) => p.severity === 'error');
  return problems.length === 0 ? null
    : el('p', {class: 'why'}, `${problems[0].path.slice(1)} ${problems[0].message}`.trim());
}

function timesOf(entry) {
  const from = Number(entry.valid_time);
  const until = Number(entry.expire_time);
  if (!from && !until) return 'always';
  return `${from ? dateText(from) : 'now'} – ${until ? dateText(until) : 'open'}`;
}

function chip(popup) {
  return el('span', {class: 'chip ' + popup.state}, kStates[popup.state]);
}

async function move(popup, before) {
  await post(`popups/${popup.id}/move`, {before});
  toast('Moved. The new priorities reach games when the popups are published.');
  await refresh();
}

// The place where a row is dropped, by the middle of the rows.
function rowBelow(list, y, dragged) {
  return Array.from(list.children).find((row) => {
    const box = row.getBoundingClientRect();
    return row !== dragged && y < box.top + box.height / 2;
  });
}

function drag(event, row, popup) {
  const list = row.parentElement;
  const start = row.nextElementSibling;
  event.preventDefault();
  row.classList.add('dragged');
  const onMove = (moved) => {
    const below = rowBelow(list, moved.clientY, row);
    if (below !== row.nextElementSibling) list.insertBefore(row, below || null);
  };
  // The row is let go of at once, whatever the console still waits for.
  const onUp = () => {
    row.classList.remove('dragged');
    window.removeEventListener('pointermove', onMove);
    window.removeEventListener('pointerup', onUp);
    window.removeEventListener('pointercancel', onUp);
    const next = row.nextElementSibling;
    if (next !== start) act(() => move(popup, next ? Number(next.dataset.id) : 0))();
  };
  window.addEventListener('pointermove', onMove);
  window.addEventListener('pointerup', onUp);
  window.addEventListener('pointercancel', onUp);
}

function moveButtons(popup, index) {
  const all = overview.popups;
  const title = `popup ${popup.entry.pop_id}`;
  const step = (label, sign, target, disabled) => el('button', {
    class: 'icon', type: 'button', disabled, title: label, 'aria-label': `${label}: ${title}`,
    onclick: act(async () => {
      await move(popup, target());
      const row = place.querySelector(`li[data-id="${popup.id}"]`);
      const same = row.querySelector(`[title="${label}"]`);
      (same.disabled ? row.querySelector('.row') : same).focus();
    }),
  }, sign);
  return [
    step('Higher priority', '↑', () => all[index - 1].id, index === 0),
    step('Lower priority', '↓', () => (all[index + 2] ? all[index + 2].id : 0),
      index === all.length - 1),
  ];
}

function rowOf(popup, index) {
  const {entry} = popup;
  const row = el('li', {'data-id': popup.id, class: popup.id === chosen ? 'chosen' : null},
    el('span', {class: 'handle', 'aria-hidden': 'true', title: 'Drag for priority'}, '⠿'),
    el('button', {
      type: 'button', class: 'row', 'aria-current': popup.id === chosen ? 'true' : null,
      onclick: act(() => choose(popup.id)),
    },
    el('span', {class: 'title'}, entry.scene || '(no scene)',
      el('small', {}, ` #${entry.pop_id || '–'}`)),
    el('span', {class: 'states'}, chip(popup),
      popup.changed ? el('span', {class: 'chip changed'}, 'Unpublished changes') : null),
    el('span', {class: 'facts'},
      `${kindOf(entry)} · scene type ${entry.scene_type || 0} · channel ` +
      `${entry.valid_platform || 'any'} · priority ${entry.priority || 0}`),
    el('span', {class: 'facts'}, timesOf(entry)),
    popup.state === 'broken' ? why(popup) : null),
    el('span', {class: 'steps'}, moveButtons(popup, index)));
  row.querySelector('.handle').addEventListener('pointerdown', (event) => drag(event, row, popup));
  return row;
}

function releaseList() {
  const {releases} = overview;
  if (releases.length === 0) return el('p', {class: 'hint'}, 'Nothing has been published yet.');
  return el('ol', {class: 'releases'}, releases.slice(0, 12).map((release, index) => el('li', {},
    el('span', {}, el('b', {}, `${release.id}: ${release.what}`), ` by ${release.who}`,
      el('small', {}, ` ${dateText(release.time)} · ${release.popups} ${release.popups === 1 ? 'popup' : 'popups'}`)),
    index === 0 ? el('span', {class: 'chip live'}, 'Live now')
      : el('button', {
        type: 'button', class: 'quiet', 'aria-label': `Roll back to release ${release.id}`,
        onclick: act(async () => {
          await post('rollback', {release: release.id});
          toast(`Release ${release.id} is live again.`);
          await refresh();
        }),
      }, 'Roll back'))));
}

function starterChoice() {
  return select(kStarters, starter, {
    name: 'starter', 'aria-label': 'Page to start a new popup from',
    onchange: (event) => { starter = event.target.value; },
  });
}

async function create() {
  if (!mayLeave()) return;
  const number = overview.next_pop_id;
  const page = await (await fetch(`/console/starter-${starter}.html`)).text();
  const isPolicy = starter === 'policy';
  const now = Math.floor(Date.now() / 1000);
  const made = await post('popups', {
    entry: {
      pop_id: number, scene: isPolicy ? 'ZOVKPolicy' : `scene-${number}`,
      scene_type: isPolicy ? 0 : 1, pop_type: 1, content_type: 1, pop_freq: 2,
      priority: 0, publish_time: now, page: `popup-${number}.html`,
      report_url: `{{base}}/report/popup-${number}`,
    },
    page_text: page,
  });
  closeEditor();
  chosen = made.id;
  await refresh();
  place.querySelector('.editor input').focus();
}

async function choose(id) {
  if (id !== chosen && !mayLeave()) return;
  chosen = id;
  closeEditor();
  await refresh();
  const heading = place.querySelector('.editor h1');
  if (heading) heading.focus();
}

async function publishAll() {
  if (!mayLeave()) return;
  closeEditor();
  const ids = overview.popups.filter((popup) => popup.changed).map((popup) => popup.id);
  await post('publish', {ids});
  toast(`${ids.length} published.`);
  await refresh();
}

export async function refresh() {
  // What has the keyboard keeps it, although the whole is made anew.
  const held = document.activeElement && document.activeElement.closest('.editor')
    ? document.activeElement.name : '';
  overview = await get('popups');
  const popup = overview.popups.find((other) => other.id === chosen);
  if (!popup) chosen = 0;
  const waiting = overview.popups.filter((other) => other.changed).length;
  place.classList.toggle('editing', Boolean(popup));
  const list = el('section', {class: 'list', 'aria-label': 'All popups'},
    el('div', {class: 'head'}, el('h1', {}, 'Popups'), starterChoice(),
      el('button', {type: 'button', class: 'main', onclick: act(create)}, 'New popup')),
    overview.problem ? el('p', {class: 'notice', role: 'alert'}, overview.problem) : null,
    overview.unchecked ? el('p', {class: 'hint'},
      `The scripts of some pages were not checked: ${overview.unchecked}.`) : null,
    waiting > 0 ? el('p', {class: 'waiting'}, `${waiting} with unpublished changes. `,
      el('button', {type: 'button', class: 'quiet', onclick: act(publishAll)},
        'Publish them')) : null,
    overview.popups.length === 0
      ? el('p', {class: 'hint'}, 'There is no popup yet. Make the first one.')
      : el('ol', {class: 'popups'}, overview.popups.map(rowOf)),
    el('p', {class: 'hint'}, `The highest priority stands first. Times are in ${zoneName()}.`),
    el('details', {open: true}, el('summary', {}, 'Releases'), releaseList()));
  const side = el('div', {class: 'side'});
  const old = place.querySelector('.list');
  const scroll = old ? old.scrollTop : 0;
  const editor = place.querySelector('.editor');
  const keep = editor && popup && Number(editor.dataset.id) === popup.id && isDirty();
  if (keep) side.append(editor);
  place.replaceChildren(el('div', {class: 'split'}, list, side));
  list.scrollTop = scroll;
  if (popup && !keep) {
    await openEditor(side, popup, {
      refresh,
      choose,
      close: act(async () => {
        await choose(0);
        place.querySelector('.list button').focus();
      }),
    });
  }
  const holder = held && place.querySelector(`.editor [name="${held}"]`);
  if (holder) holder.focus();
  if (!popup) {
    side.append(el('div', {class: 'panel empty'},
      el('p', {}, 'Choose a popup to see and change it.')));
  }
}

export async function showPopups(content) {
  place = content;
  await refresh();
}
