// Lets a game pad reach what a page offers, in a world of scripts that the page cannot reach: tells
// where its links and fields are, and puts the focus there.
(function (wish, number, most) {
  var kinds = 'a[href],area[href],button,input,select,textarea,summary,[tabindex],[contenteditable]';

  function isSeen(element, box) {
    var inside = box.right > 0 && box.bottom > 0 && box.left < window.innerWidth &&
        box.top < window.innerHeight;
    return inside && box.width > 0 && box.height > 0 &&
        window.getComputedStyle(element).visibility === 'visible';
  }

  function focused() {
    var element = document.activeElement;
    return element && element !== document.body && element !== document.documentElement ?
        element : null;
  }

  function list() {
    var all = document.querySelectorAll(kinds);
    var places = [];
    var now = -1;
    window.zovkPad = [];
    for (var i = 0; i < all.length && places.length < most; i += 1) {
      var box = all[i].getBoundingClientRect();
      if (all[i].disabled || all[i].tabIndex < 0 || !isSeen(all[i], box)) continue;
      if (all[i] === focused()) now = places.length;
      places.push([box.left, box.top, box.width, box.height]);
      window.zovkPad.push(all[i]);
    }
    var rest = document.documentElement.scrollHeight - window.innerHeight - window.scrollY;
    return JSON.stringify({places: places, focused: now, above: window.scrollY > 1, below: rest > 1});
  }

  function focus() {
    var element = (window.zovkPad || [])[number];
    if (element) element.focus();
  }

  function press() {
    if (focused()) focused().click();
  }

  // True when the page has a use of its own for the key.
  function leave() {
    var key = {key: 'Escape', code: 'Escape', bubbles: true, cancelable: true};
    return !(focused() || document.body || document).dispatchEvent(
        new window.KeyboardEvent('keydown', key));
  }

  function scroll() {
    window.scrollBy(0, number * window.innerHeight / 2);
  }

  return {list: list, focus: focus, press: press, leave: leave, scroll: scroll}[wish]();
})
