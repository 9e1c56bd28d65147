// What every page does: an element with data-action answers the popup when it is pressed. Blanks in
// a message are lost on the way, so each is one word. The build puts this file into each page.
function answer(action, msg) {
  window.webkit.messageHandlers.ZOVKPopup.postMessage(JSON.stringify({action, msg}));
}

document.addEventListener('click', (event) => {
  const pressed = event.target.closest('[data-action]');
  if (pressed) answer(pressed.dataset.action, pressed.dataset.msg || '');
});
