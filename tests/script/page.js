// What a browser gives every page, as far as the bridge's script needs it. `page` is for the tests
// to look at and to run.
var window = this;
var page = {signals: [], frames: [], log: [], timers: [], delays: [], errors: []};
var console = {
  log: function () { page.log.push(Array.prototype.slice.call(arguments)); }
};
function setTimeout(callback, delay) {
  page.timers.push(callback);
  page.delays.push(delay);
}
var document = {
  createElement: function (kind) {
    var element = {kind: kind, style: {}};
    Object.defineProperty(element, 'src', {
      set: function (address) { page.signals.push(address); }
    });
    return element;
  },
  documentElement: {
    appendChild: function (element) { page.frames.push(element); }
  }
};
page.runTimer = function () {
  var callback = page.timers.shift();
  try {
    callback();
  } catch (error) {
    page.errors.push(String(error.name));
    if (window.onerror) { window.onerror(error.message, 'https://page/', 7); }
  }
};
