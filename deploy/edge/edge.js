// What the edge decides of queries and reports: whether they are signed, and where they go.
import crypto from 'crypto';

// A rule of the studio's that is slower than this counts as a no.
const RULE_MILLISECONDS = 200;
const NOT_NEEDED = '{"need_popup":0}';

const MARK = '&game_id=';
const SIGNATURE = '&sig=';

function answer(r, status, object) {
  r.headersOut['Content-Type'] = 'application/json';
  r.headersOut['Cache-Control'] = 'no-store';
  r.return(status, typeof object === 'string' ? object : JSON.stringify(object));
}

function refuse(r, status, message) {
  answer(r, status, {code: status, message: message});
}

// The bytes that are signed of a raw query, and the signature that came with them. What stands
// before the last "game_id=" that begins a parameter belongs to the address and is not signed.
function split(args) {
  const later = args.lastIndexOf(MARK);
  const parameters = later < 0 ? args : args.subarray(later + 1);
  const end = parameters.lastIndexOf(SIGNATURE);
  if (end < 0) return {parameters: parameters, signature: ''};
  return {parameters: parameters.subarray(0, end),
          signature: parameters.subarray(end + SIGNATURE.length).toString()};
}

function valueOf(parameters, name) {
  const pieces = parameters.split('&');
  for (let i = 0; i < pieces.length; ++i) {
    if (pieces[i].startsWith(name + '=')) return pieces[i].slice(name.length + 1);
  }
  return undefined;
}

function missing(parameters) {
  const needed = ['game_id', 'os', 'version'];
  for (let i = 0; i < needed.length; ++i) {
    if (!valueOf(parameters, needed[i])) return needed[i];
  }
  // A machine may have nothing to identify the installation by.
  return valueOf(parameters, 'install_id') === undefined ? 'install_id' : '';
}

function keyOf(game) {
  const known = Object.prototype.hasOwnProperty.call(games, game);
  return known && typeof games[game] === 'string' ? games[game] : undefined;
}

// The common parameters of a signed request; undefined once it has been refused.
function signedParameters(r) {
  if (r.method !== 'POST') return refuse(r, 405, 'only POST');
  const body = r.requestBuffer;
  if (!body || body.length === 0) return refuse(r, 400, 'the body is empty');
  const parts = split(r.rawVariables.args || Buffer.alloc(0));
  const parameters = parts.parameters.toString();
  const lacking = missing(parameters);
  if (lacking) return refuse(r, 400, lacking + ' is missing');
  const key = keyOf(valueOf(parameters, 'game_id'));
  if (key === undefined) return refuse(r, 403, 'unknown game_id');
  const expected = crypto.createHash('md5').update(r.rawVariables.uri).update('?')
      .update(parts.parameters).update(body).update(key).digest('hex');
  if (parts.signature !== expected) return refuse(r, 403, 'wrong signature');
  return parameters;
}

// An argument of the queue's command as a piece of its address, where dots name a format.
function argument(text) {
  return '/' + encodeURIComponent(text).replace(/\./g, '%2e');
}

// Whether the stream said under which number it keeps the report. All else is no promise.
function isKept(reply) {
  if (reply.status !== 200) return false;
  try {
    return /^[0-9]+-[0-9]+$/.test(JSON.parse(reply.responseText).FCALL);
  } catch (error) {
    return false;
  }
}

async function report(r) {
  const parameters = signedParameters(r);
  if (parameters === undefined) return;
  r.variables.queue_target = '/FCALL/add_report/1/reports' + argument(r.variables.largest_backlog) +
      argument(r.uri) + argument(parameters);
  const reply = await r.subrequest('/_queue', {method: 'PUT'});
  if (isKept(reply)) {
    answer(r, 200, '{"code":0}');
  } else {
    refuse(r, 503, 'not stored');
  }
}

function ruleAnswer(reply) {
  if (reply.status !== 200) return NOT_NEEDED;
  try {
    return JSON.stringify(JSON.parse(reply.responseText));
  } catch (error) {
    return NOT_NEEDED;
  }
}

// The first of the two answers: the rule's, or the no that is due.
function query(r) {
  if (signedParameters(r) === undefined) return;
  let answered = false;
  const once = (text) => {
    if (answered) return;
    answered = true;
    answer(r, 200, text);
  };
  const due = setTimeout(() => once(NOT_NEEDED), RULE_MILLISECONDS);
  r.subrequest('/_rule', {method: 'POST'}).then((reply) => {
    clearTimeout(due);
    once(ruleAnswer(reply));
  });
}

export default {report, query};
