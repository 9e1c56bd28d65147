// What pages find as window.webkit.messageHandlers. A value becomes text here, in the page's own
// process and at its own cost; the text goes to the other half, which no page can reach, along an
// element that both know. Texts stay what they are.
(function (jsonOf, names) {
  // A document that is opened anew keeps its window.
  if (window.webkit) return;

  var line = document.createElement('i');
  var dispatch = line.dispatchEvent.bind(line);
  var Post = window.CustomEvent;
  var Outcome = window.Promise;
  var CloneError = window.DOMException;

  function send(kind, index, text) {
    dispatch(new Post('post', {detail: kind + index + ' ' + text}));
  }

  function post(index, value) {
    var json;
    if (typeof value === 'string') return send('t', index, value);
    if (typeof value === 'function' || typeof value === 'symbol') {
      throw new CloneError('The object can not be cloned.', 'DataCloneError');
    }
    json = jsonOf(value);
    if (json.problem) return send('x', index, json.problem);
    return json.text === undefined ? send('u', index, '') : send('j', index, json.text);
  }

  function handlerOf(index) {
    return {
      postMessage: function (value) {
        return new Outcome(function (resolve) {
          post(index, value);
          resolve();
        });
      }
    };
  }

  function offer() {
    var root = document.documentElement;
    root.appendChild(line);
    dispatch(new window.Event('zovkLine', {bubbles: true}));
    root.removeChild(line);
  }

  var handlers = {};
  names.forEach(function (name, index) {
    if (name) handlers[name] = handlerOf(index);
  });
  Object.defineProperty(window, 'webkit', {value: {messageHandlers: handlers}, enumerable: true});

  // Either half may come first.
  document.addEventListener('zovkAsk', offer, {once: true});
  offer();
})
