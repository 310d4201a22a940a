// Gives the page window.chrome.webview. postMessage(text) reaches the plug-in through the web
// channel object "webview"; the plug-in's replies arrive as "message" events whose `data` is the
// reply text. Messages posted before the channel is up are sent once it is.
(function () {
    'use strict';
    if (window.chrome && window.chrome.webview)
        return;

    const listeners = [];
    const waiting = [];
    let plugin = null;

    function send(message) {
        if (typeof message === 'string') {
            plugin.postMessage(message, true);
            return;
        }
        let text = '';
        try {
            text = String(JSON.stringify(message));
        } catch (e) {
            text = String(message);
        }
        plugin.postMessage(text, false);
    }

    const webview = {
        postMessage(message) {
            if (plugin)
                send(message);
            else
                waiting.push(message);
        },
        addEventListener(type, listener) {
            if (type === 'message' && typeof listener === 'function' &&
                !listeners.includes(listener))
                listeners.push(listener);
        },
        removeEventListener(type, listener) {
            const at = listeners.indexOf(listener);
            if (type === 'message' && at >= 0)
                listeners.splice(at, 1);
        },
    };
    // The plug-in runs this with each reply.
    Object.defineProperty(webview, '__receive', {
        value(text) {
            const event = {type: 'message', data: text};
            for (const listener of listeners.slice()) {
                try {
                    listener.call(webview, event);
                } catch (e) {
                    console.error(e && e.stack ? e.stack : String(e));
                }
            }
        },
    });

    window.chrome = window.chrome || {};
    window.chrome.webview = webview;

    new QWebChannel(qt.webChannelTransport, function (channel) {
        plugin = channel.objects.webview;
        for (const message of waiting.splice(0))
            send(message);
    });
})();
