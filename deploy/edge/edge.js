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

function valueOf(pieces, name) {
  const piece = pieces.find((one) => one.startsWith(name));
  return piece === undefined ? undefined : piece.slice(name.length);
}

function missing(pieces) {
  if (!valueOf(pieces, 'game_id=')) return 'game_id';
  if (!valueOf(pieces, 'os=')) return 'os';
  if (!valueOf(pieces, 'version=')) return 'version';
  // A machine may have nothing to identify the installation by.
  return valueOf(pieces, 'install_id=') === undefined ? 'install_id' : '';
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
  const pieces = parameters.split('&');
  const lacking = missing(pieces);
  if (lacking) return refuse(r, 400, lacking + ' is missing');
  const key = keyOf(valueOf(pieces, 'game_id='));
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

const KEPT = '{"FCALL":"';

// Whether the stream said under which number it keeps this very report. All else is no promise.
function isKept(name, reply) {
  return reply.status === 200 && reply.responseText.startsWith(KEPT + name + ' ');
}

// Webdis now and then gives a connection the answer to a request that was cut off before; every
// later answer on it then comes one request late.
function isAnothers(name, reply) {
  return reply.status === 200 && reply.responseText.startsWith(KEPT) && !isKept(name, reply);
}

function answerReport(r, name, reply) {
  if (isKept(name, reply)) {
    answer(r, 200, '{"code":0}');
  } else {
    refuse(r, 503, 'not stored');
  }
}

function report(r) {
  const parameters = signedParameters(r);
  if (parameters === undefined) return;
  const name = r.variables.request_id;  // Another one each time that it is read.
  r.variables.queue_target = '/FCALL/add_report/1/reports' + argument(r.variables.largest_backlog) +
      argument(name) + argument(r.uri) + argument(parameters);
  r.subrequest('/_queue', {method: 'PUT'}, (reply) => {
    if (isAnothers(name, reply)) {
      // On a connection of its own. A report that is in the stream twice is stored once.
      r.subrequest('/_queue_alone', {method: 'PUT'}, (second) => answerReport(r, name, second));
    } else {
      answerReport(r, name, reply);
    }
  });
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
