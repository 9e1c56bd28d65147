// Stands between pages and the helper, in a world of scripts that pages cannot reach: nothing but
// texts of a bounded length get through, and only so many in a second.
(function (longest, mostMessages, mostSigns) {
  var handler = window.webkit.messageHandlers.zovk;

  function countIn(holder) {
    holder.zovkCount = holder.zovkCount || {since: 0, messages: 0, signs: 0, dropped: 0, told: 0};
    return holder.zovkCount;
  }

  // One count for all frames of a page that may see one another.
  function counted() {
    try {
      return countIn(window.top);
    } catch (foreign) {
      return countIn(window);
    }
  }

  function isSecondOver(since, now) {
    return now < since || now - since >= 1000;
  }

  function tellDropped() {
    var count = counted();
    var now = Date.now();
    if (count.dropped === 0 || !isSecondOver(count.told, now)) return;
    handler.postMessage('d' + count.dropped + ' ');
    count.dropped = 0;
    count.told = now;
  }

  function isAllowed(signs) {
    var count = counted();
    var now = Date.now();
    if (isSecondOver(count.since, now)) {
      count.since = now;
      count.messages = count.signs = 0;
    }
    count.messages += 1;
    count.signs += signs;
    if (count.messages <= mostMessages && count.signs <= mostSigns) return true;
    count.dropped += 1;
    // What comes last is told, too, unless the page stops the timer.
    if (count.dropped === 1) setTimeout(tellDropped, 1100);
    return false;
  }

  function take(posted) {
    var text = posted.detail;
    if (typeof text !== 'string') return;
    if (isAllowed(text.length > longest ? 0 : text.length)) {
      handler.postMessage(text.length > longest ? 'x0 too long' : text.toWellFormed());
    }
    tellDropped();
  }

  document.addEventListener('zovkLine', function (offered) {
    offered.stopImmediatePropagation();
    offered.target.addEventListener('post', take);
  }, {capture: true, once: true});
  document.dispatchEvent(new window.Event('zovkAsk'));
})
