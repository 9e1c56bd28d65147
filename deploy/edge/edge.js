// What the edge decides of queries: whether they are signed, and what is answered when the rule is
// late. The signatures of reports are checked by the receiver.
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

// What a game always sends, from "game_id=" on. Only the installation may have no identifier.
const COMPLETE = /^game_id=([^&]+)(?=.*&os=[^&])(?=.*&version=[^&])(?=.*&install_id=)/;
const FILLED = ['game_id', 'os', 'version'];

function missing(parameters) {
  const pieces = parameters.split('&');
  const filled = (name) => pieces.some((one) => one.startsWith(name + '=') && !one.endsWith('='));
  return FILLED.find((name) => !filled(name)) || 'install_id';
}

function keyOf(game) {
  const known = Object.prototype.hasOwnProperty.call(games, game);
  return known && typeof games[game] === 'string' && games[game] ? games[game] : undefined;
}

// Whether a request is signed; it has been refused otherwise.
function isSigned(r) {
  const no = (status, message) => {
    refuse(r, status, message);
    return false;
  };
  if (r.method !== 'POST') return no(405, 'only POST');
  const body = r.requestBuffer;
  if (!body || body.length === 0) return no(400, 'the body is empty');
  const parts = split(r.rawVariables.args || Buffer.alloc(0));
  const text = parts.parameters.toString();
  const complete = COMPLETE.exec(text);
  if (!complete) return no(400, missing(text) + ' is missing');
  const key = keyOf(complete[1]);
  if (key === undefined) return no(403, 'unknown game_id');
  const expected = crypto.createHash('md5').update(r.rawVariables.uri).update('?')
      .update(parts.parameters).update(body).update(key).digest('hex');
  return parts.signature === expected || no(403, 'wrong signature');
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
  if (!isSigned(r)) return;
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

export default {query};
