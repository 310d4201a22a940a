// The page's side of the editor's message channel. A request is the text of the JSON array
// ["base", command, parameters, uuid] posted through window.chrome.webview; the reply comes
// back as a string holding {ret, data, uuid}. The editor serves requests one at a time, in the
// order posted, and some replies carry no uuid, so a reply without uuid answers the oldest
// request in flight. Requests go out one after the other, except that pipelined ones go out
// together: a run of them costs one wait for the editor instead of one per request.
(function (root) {
  'use strict';

  const messages =
    typeof require === 'function' ? require('./messages.js') : root.Sablemark.messages;

  class BridgeError extends Error {
    // ret: the editor's code, or null when there was no usable reply at all
    constructor(command, ret, data, detail) {
      super(detail || messages.describeFailure(command, ret));
      this.name = 'BridgeError';
      this.command = command;
      this.ret = ret;
      this.data = data === undefined ? null : data;
    }
  }

  class Bridge {
    // transport: the chrome.webview object, or a function giving it once it exists (the
    // editor may inject it after the page's scripts have run).
    constructor(transport, { connectTimeoutMs = 5000, pollMs = 50, idPrefix } = {}) {
      this._source = typeof transport === 'function' ? transport : () => transport;
      this._transport = null;
      this._connectTimeoutMs = connectTimeoutMs;
      this._pollMs = pollMs;
      this._prefix = idPrefix || `sm${Date.now().toString(36)}`;
      this._serial = 0;
      this._queue = [];
      this._inFlight = []; // sent, oldest first
      this._pumping = false;
      this._gaveUp = false;
      this._onMessage = (event) => this._receive(event);
    }

    // True while a request waits for its reply: what the editor reports meanwhile was caused
    // by that request.
    get busy() {
      return this._inFlight.length > 0;
    }

    // Sends a command; resolves with the reply's data when ret is 0, rejects with a
    // BridgeError otherwise. `pipelined`: the request may go out while other pipelined ones
    // wait for their replies. Only for requests that do not depend on each other's outcome and
    // whose commands open no dialog (while a dialog is up the editor may serve the next
    // request before it replies).
    call(command, params = {}, { pipelined = false } = {}) {
      return new Promise((resolve, reject) => {
        this._queue.push({ command, params, pipelined, resolve, reject });
        this._pump();
      });
    }

    async _connect() {
      if (this._transport) return this._transport;
      const deadline = Date.now() + this._connectTimeoutMs;
      for (;;) {
        const transport = this._source();
        if (transport && typeof transport.postMessage === 'function') {
          transport.addEventListener('message', this._onMessage);
          this._transport = transport;
          return transport;
        }
        if (Date.now() >= deadline || this._gaveUp) {
          this._gaveUp = true; // later requests look once and do not wait again
          return null;
        }
        await new Promise((r) => setTimeout(r, this._pollMs));
      }
    }

    // A request goes out when none is in flight, or when it and all those in flight are
    // pipelined.
    _mayGo(request) {
      return this._inFlight.length === 0 ||
        (request.pipelined && this._inFlight.every((r) => r.pipelined));
    }

    async _pump() {
      if (this._pumping) return;
      this._pumping = true;
      try {
        while (this._queue.length && this._mayGo(this._queue[0])) {
          const request = this._queue.shift();
          request.uuid = `${this._prefix}-${++this._serial}`;
          this._inFlight.push(request);
          const transport = await this._connect();
          if (!transport) {
            this._finish(request, new BridgeError(request.command, null, null,
              'There is no connection to the editor: open this page from the editor\'s task pane.'));
            continue;
          }
          try {
            transport.postMessage(JSON.stringify(['base', request.command, request.params, request.uuid]));
          } catch (error) {
            this._finish(request, new BridgeError(request.command, null, null,
              `Sending ${request.command} to the editor failed: ${error.message}`));
          }
        }
      } finally {
        this._pumping = false;
      }
    }

    _receive(event) {
      const oldest = this._inFlight[0];
      if (!oldest) return;
      const text = typeof event.data === 'string' ? event.data : JSON.stringify(event.data);
      let reply;
      try {
        reply = JSON.parse(text);
      } catch (_) {
        reply = null;
      }
      if (!reply || typeof reply !== 'object' || Array.isArray(reply)) {
        const shown = String(text).trim().slice(0, 80);
        this._finish(oldest, new BridgeError(oldest.command, null, null,
          `The editor answered ${oldest.command} with "${shown}" instead of a reply.`));
        return;
      }
      const request = reply.uuid === undefined ? oldest : this._inFlight.find((r) => r.uuid === reply.uuid);
      if (!request) return;
      if (reply.ret === 0) this._finish(request, null, reply.data === undefined ? null : reply.data);
      else if (Number.isInteger(reply.ret)) {
        this._finish(request, new BridgeError(request.command, reply.ret, reply.data));
      } else this._finish(request, new BridgeError(request.command, null, reply.data));
    }

    _finish(request, error, data) {
      this._inFlight.splice(this._inFlight.indexOf(request), 1);
      if (error) request.reject(error);
      else request.resolve(data);
      this._pump();
    }
  }

  // An event as the editor hands it to window.__dispatchEvent: an object, or its JSON text.
  // Gives {name, data} or null for anything else.
  function parseEvent(value) {
    let event = value;
    if (typeof value === 'string') {
      try {
        event = JSON.parse(value);
      } catch (_) {
        return null;
      }
    }
    if (!event || typeof event !== 'object' || typeof event.name !== 'string') return null;
    return { name: event.name, data: event.data && typeof event.data === 'object' ? event.data : {} };
  }

  const api = { Bridge, BridgeError, parseEvent };
  if (typeof module === 'object' && module.exports) module.exports = api;
  else (root.Sablemark = root.Sablemark || {}).bridge = api;
})(typeof globalThis !== 'undefined' ? globalThis : this);
