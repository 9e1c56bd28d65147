// Stands before a page that is shown in the console's frame, and gives it what it finds in a game:
// what it posts goes to the console.
(function () {
  'use strict';
  function handler(name) {
    return {
      postMessage: function (message) {
        window.parent.postMessage({
          handler: name,
          text: typeof message === 'string' ? message : JSON.stringify(message)
        }, '*');
      }
    };
  }
  window.webkit = {
    messageHandlers: {ZOVKPopup: handler('ZOVKPopup'), __qvOpenSdk: handler('__qvOpenSdk')}
  };
}());
