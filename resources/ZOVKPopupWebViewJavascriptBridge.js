;(function () {
  // The page's half of the message bridge. The game runs this text in a page that asks for the
  // bridge. Old engines run it too, so it keeps to the language of their time.

  if (window.WebViewJavascriptBridge) {
    return;
  }

  if (!window.onerror) {
    window.onerror = function (message, url, line) {
      console.log('WebViewJavascriptBridge: ERROR:' + message + '@' + url + ':' + line);
    };
  }

  var CUSTOM_PROTOCOL_SCHEME = 'https';
  var QUEUE_HAS_MESSAGE = '__wvjb_queue_message__';

  var messagingIframe;
  var sendMessageQueue = [];
  var messageHandlers = {};
  var responseCallbacks = {};
  var uniqueId = 1;
  var dispatchMessagesWithTimeoutSafety = true;

  window.WebViewJavascriptBridge = {
    registerHandler: registerHandler,
    callHandler: callHandler,
    disableJavscriptAlertBoxSafetyTimeout: disableJavscriptAlertBoxSafetyTimeout,
    _fetchQueue: _fetchQueue,
    _handleMessageFromObjC: _handleMessageFromObjC
  };

  // For the page.

  function registerHandler(handlerName, handler) {
    messageHandlers[handlerName] = handler;
  }

  // The data may be left out when there is a callback.
  function callHandler(handlerName, data, responseCallback) {
    if (arguments.length === 2 && typeof data === 'function') {
      responseCallback = data;
      data = null;
    }
    _doSend({handlerName: handlerName, data: data}, responseCallback);
  }

  function disableJavscriptAlertBoxSafetyTimeout() {
    dispatchMessagesWithTimeoutSafety = false;
  }

  // From the page to the game. A navigation of the frame, which the game cancels, tells it to come
  // and fetch the queue.

  function _signal() {
    messagingIframe.src = CUSTOM_PROTOCOL_SCHEME + '://' + QUEUE_HAS_MESSAGE;
  }

  function _doSend(message, responseCallback) {
    if (responseCallback) {
      var callbackId = 'cb_' + uniqueId + '_' + new Date().getTime();
      uniqueId += 1;
      responseCallbacks[callbackId] = responseCallback;
      message.callbackId = callbackId;
    }
    sendMessageQueue.push(message);
    _signal();
  }

  function _fetchQueue() {
    var queue = JSON.stringify(sendMessageQueue);
    sendMessageQueue = [];
    return queue;
  }

  // From the game to the page. A dialog that a handler opens must not block the game's call, so
  // messages are handled on a turn of their own unless the page or the game wants otherwise.

  function _handleMessageFromObjC(messageJSON) {
    if (!dispatchMessagesWithTimeoutSafety) {
      _handle(messageJSON);
      return;
    }
    setTimeout(function () {
      _handle(messageJSON);
    }, 0);
  }

  // An identifier counts when it is there, also when it is empty, as it does for the game.

  function _handle(messageJSON) {
    var message = JSON.parse(messageJSON);
    if (message.responseId !== undefined) {
      _handleResponse(message);
    } else {
      _handleRequest(message);
    }
  }

  function _handleResponse(message) {
    var responseCallback = responseCallbacks[message.responseId];
    if (!responseCallback) {
      return;
    }
    responseCallback(message.responseData);
    delete responseCallbacks[message.responseId];
  }

  function _handleRequest(message) {
    var responseCallback;
    if (message.callbackId !== undefined) {
      responseCallback = function (responseData) {
        _doSend({
          handlerName: message.handlerName,
          responseId: message.callbackId,
          responseData: responseData
        });
      };
    }
    var handler = messageHandlers[message.handlerName];
    if (!handler) {
      console.log('WebViewJavascriptBridge: WARNING: no handler for message from ObjC:', message);
      return;
    }
    handler(message.data, responseCallback);
  }

  // The page leaves functions in window.WVJBCallbacks before it asks for the bridge.
  function _callWVJBCallbacks() {
    var callbacks = window.WVJBCallbacks;
    delete window.WVJBCallbacks;
    for (var i = 0; i < callbacks.length; i++) {
      callbacks[i](window.WebViewJavascriptBridge);
    }
  }

  messagingIframe = document.createElement('iframe');
  messagingIframe.style.display = 'none';
  _signal();
  document.documentElement.appendChild(messagingIframe);

  registerHandler('_disableJavascriptAlertBoxSafetyTimeout', disableJavscriptAlertBoxSafetyTimeout);

  setTimeout(_callWVJBCallbacks, 0);
})();
