// Automatic mode: runs the whole workflow without clicks on each document that becomes current,
// applies, saves the copy and writes one summary line to the console for the job that reads it.
(function (root) {
  'use strict';

  const req = (file, name) => (typeof require === 'function' ? require(file) : root.Sablemark[name]);
  const { BridgeError } = req('./bridge.js', 'bridge');

  const SUMMARY_TAG = 'SABLEMARK-SUMMARY ';
  const ERROR_TAG = 'SABLEMARK-ERROR ';

  class AutoRunner {
    // scanOptions: what Workflow.scan takes; log: where the lines go (console.log)
    constructor({ workflow, scanOptions = {}, log = (line) => console.log(line) }) {
      this.workflow = workflow;
      this.scanOptions = scanOptions;
      this.log = log;
      this.done = new Set(); // ids of documents run already
      this.outputs = new Set(); // paths of the copies written, never run again
      this._tail = Promise.resolve();
    }

    // Runs the current document if there is one; otherwise waits for an event.
    start() {
      return this._enqueue();
    }

    handleEvent(event) {
      if (!event || (event.name !== 'ev-doc-activate' && event.name !== 'ev-doc-open-success')) return null;
      const id = event.data && event.data.id;
      if (!id || id === '0' || this.done.has(id)) return null;
      return this._enqueue();
    }

    _enqueue() {
      this._tail = this._tail.then(() => this._runCurrent()).catch(() => {});
      return this._tail;
    }

    async _runCurrent() {
      let doc;
      try {
        doc = await this.workflow.refreshDocument();
      } catch (error) {
        this._logError(null, error);
        return;
      }
      if (!doc || this.done.has(doc.id) || this.outputs.has(doc.filePath)) return;
      this.done.add(doc.id);
      try {
        const session = await this.workflow.runUnattended(this.scanOptions);
        const { file, output, pages, findings, total, verified, pagesWithoutText } = session.summary;
        this.outputs.add(output);
        this.log(SUMMARY_TAG + JSON.stringify({ file, output, pages, findings, total, verified, pagesWithoutText }));
      } catch (error) {
        this._logError(doc, error);
      }
    }

    _logError(doc, error) {
      this.log(ERROR_TAG + JSON.stringify({
        file: doc ? doc.filePath || doc.name : null,
        command: error instanceof BridgeError ? error.command : null,
        ret: error instanceof BridgeError ? error.ret : null,
        message: error.message,
      }));
    }
  }

  const api = { AutoRunner, SUMMARY_TAG, ERROR_TAG };
  if (typeof module === 'object' && module.exports) module.exports = api;
  else (root.Sablemark = root.Sablemark || {}).autoRun = api;
})(typeof globalThis !== 'undefined' ? globalThis : this);
