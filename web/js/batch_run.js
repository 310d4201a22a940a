// Batch mode: the editor's batch dialog opens the page with batchRedaction=true and a list of
// files queued. The page takes them one at a time (open, find, mark, apply, save, close) with the
// same workflow as the pane's scan, and at the end reports how the run went.
(function (root) {
  'use strict';

  const req = (file, name) => (typeof require === 'function' ? require(file) : root.Sablemark[name]);
  const { BridgeError } = req('./bridge.js', 'bridge');

  // How a run ends, as the editor's batch end takes it.
  const END = {
    done: 0, // every file was redacted and saved
    notStarted: 200001, // the editor refused the start; it shows the result and brings the page back
    failures: 200009, // the run went to the end, some files failed
    stopped: 200010, // the user stopped it; the editor closes the page without a result
  };
  // openNextFileForBatch's own answers beside 0.
  const OPEN_FAILED = 1;
  const QUEUE_EMPTY = -1;

  class BatchRunner {
    // scanOptions: what Workflow.scan takes (terms, wholeWord, kinds)
    constructor({ workflow, scanOptions = {}, log = () => {} }) {
      this.workflow = workflow;
      this.bridge = workflow.bridge;
      this.scanOptions = { ...scanOptions, batch: true };
      this.log = log;
      this._listeners = [];
      this._reset();
    }

    _reset() {
      this.running = false;
      this.stopRequested = false;
      this.count = 0; // files queued by the editor
      this.pageCount = 0; // their pages
      this.position = 0; // files taken so far, the current one included
      this.pagesDone = 0;
      this.fileName = '';
      this.redacted = []; // summaries of the files saved
      this.failed = []; // {file, message}
      this.ended = null; // {ret, message, failedFileList} once the end was sent
      this.error = null; // a failure of the run itself
    }

    onChange(listener) {
      this._listeners.push(listener);
    }

    _notify() {
      for (const listener of this._listeners) listener(this);
    }

    // Stops before the next file; the file in work is finished first.
    stop() {
      if (!this.running) return;
      this.stopRequested = true;
      this._notify();
    }

    // Runs the whole batch; resolves with what was sent to the editor at the end.
    async run() {
      if (this.running) return null;
      this._reset();
      this.running = true;
      this._notify();
      try {
        return await this._loop();
      } finally {
        this.running = false;
        this._notify();
      }
    }

    async _loop() {
      let start;
      try {
        start = await this.bridge.call('startBatchRedaction');
      } catch (error) {
        this.error = error.message;
        return this._end(END.notStarted, `The batch could not start: ${error.message}`);
      }
      this.count = nonNegative(start && start.count);
      this.pageCount = nonNegative(start && start.pageCount);
      this._notify();
      for (;;) {
        if (this.stopRequested) return this._end(END.stopped, this._tally('Stopped'));
        let opened;
        try {
          await this.bridge.call('openNextFileForBatch');
          opened = true;
        } catch (error) {
          if (!(error instanceof BridgeError) || ![OPEN_FAILED, QUEUE_EMPTY].includes(error.ret)) {
            // The channel itself failed: going on would only fail the same way.
            this.error = error.message;
            return this._end(END.failures, `${this._tally('Broken off')} ${error.message}`);
          }
          if (error.ret === QUEUE_EMPTY) break;
          opened = false;
        }
        this.position += 1;
        this.fileName = '';
        if (opened) await this._redactCurrent();
        else this._fail(`File ${this.position} of ${this.count}`, 'It could not be opened.');
        this._notify();
      }
      return this._end(this.failed.length ? END.failures : END.done, this._tally('Finished'));
    }

    async _redactCurrent() {
      let doc = null;
      this._notify();
      try {
        doc = await this.workflow.refreshDocument();
        if (!doc) throw new Error('The editor has no current document for it.');
        this.fileName = doc.filePath || doc.name || '';
        this._notify();
        const session = await this.workflow.runUnattended(this.scanOptions);
        this.pagesDone += session.pageCount;
        this.redacted.push(session.summary);
      } catch (error) {
        this._fail(this.fileName || `File ${this.position} of ${this.count}`, error.message);
      } finally {
        // The document goes whatever happened, so that the next one starts clean.
        await this.bridge.call('closeCurrentFile').catch(() => {});
        if (doc) this.workflow.forget(doc.id);
      }
    }

    _fail(file, message) {
      this.failed.push({ file, message });
      this.log(`Batch: ${file}: ${message}`);
    }

    _tally(head) {
      const failed = this.failed.length ? `, ${this.failed.length} failed` : '';
      return `${head}: ${this.redacted.length} of ${this.count} file(s) redacted${failed}.`;
    }

    async _end(ret, message) {
      const failedFileList = this.failed.map((f) => f.file);
      this.ended = { ret, message, failedFileList };
      this._notify();
      try {
        await this.bridge.call('endBatchRedaction', this.ended);
      } catch (error) {
        this.error = error.message;
      }
      return this.ended;
    }
  }

  function nonNegative(value) {
    return Number.isInteger(value) && value > 0 ? value : 0;
  }

  const api = { BatchRunner, END };
  if (typeof module === 'object' && module.exports) module.exports = api;
  else (root.Sablemark = root.Sablemark || {}).batchRun = api;
})(typeof globalThis !== 'undefined' ? globalThis : this);
