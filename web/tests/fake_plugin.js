// A stand-in for the editor's side of the bridge: answers requests the way the plug-in does
// (reply text with ret, data and uuid, keys in alphabetical order, a line feed at the end),
// raises events before the reply of the command that caused them, and keeps a log of the
// commands it served.
'use strict';

class FakePlugin {
  constructor({ docs, current = 0 } = {}) {
    this.docs = (docs || []).map((d) => ({ modified: false, ...d, pages: [...(d.pages || [])] }));
    this.currentIndex = this.docs.length ? current : -1;
    this.calls = []; // {command, params}
    this.posted = []; // raw texts posted by the page
    this.failures = new Map(); // command -> ret answered instead of serving it
    this.otherRedact = false;
    this.promptAnswer = 1; // 1 = OK at the redaction prompt
    this.savePath = (doc, suffix) => doc.filePath.replace(/(\.[^./]*)?$/, `${suffix}$1`);
    this.searches = new Map(); // searchKey -> [{page, start, length}]
    this.leakOnApply = false; // true: an apply leaves the text it should remove
    this.annots = new Map(); // name -> {searchKey, index, doc}
    this.keyDocs = new Map(); // searchKey -> id of the document it was made on
    this.onEvent = null; // the page's __dispatchEvent
    this.batchQueue = null; // a batch's files: indexes of docs, or null for a file that won't open
    this.batchStarted = false;
    this.batchEnd = null; // the parameters of endBatchRedaction
    this.batchSaved = []; // paths of the batch documents saved
    this._listeners = [];
    this._keys = 0;
    this.transport = {
      postMessage: (text) => this._receive(text),
      addEventListener: (type, fn) => type === 'message' && this._listeners.push(fn),
    };
  }

  get doc() {
    return this.docs[this.currentIndex] || null;
  }

  commands() {
    return this.calls.map((c) => c.command);
  }

  paramsOf(command) {
    return this.calls.filter((c) => c.command === command).map((c) => c.params);
  }

  emit(name, data) {
    if (this.onEvent) this.onEvent({ name, data });
  }

  activate(index) {
    this.currentIndex = index;
    this.emit('ev-doc-activate', { id: this.docs[index].id });
  }

  _receive(text) {
    this.posted.push(text);
    const [module, command, params, uuid] = JSON.parse(text);
    this.calls.push({ command, params });
    let reply;
    if (module !== 'base' || typeof this[`_${command}`] !== 'function') reply = { data: null, ret: 400000 };
    else if (this.failures.has(command)) reply = { data: null, ret: this.failures.get(command), uuid };
    else {
      const [ret, data] = this[`_${command}`](params);
      reply = { data: data === undefined ? null : data, ret, uuid };
    }
    const replyText = JSON.stringify(reply) + '\n';
    setImmediate(() => this._listeners.forEach((fn) => fn({ data: replyText })));
  }

  _modified() {
    this.doc.modified = true;
    this.emit('ev-doc-modified', { id: this.doc.id });
  }

  _loginIn() {
    if (!this.signInAnswer) return [200001];
    this.signedIn = true;
    return [0];
  }

  _getUser() {
    if (this.signedIn === false) return [200002, { qvd_domain: 'http://127.0.0.1:1' }];
    return [0, { info: { email: 'ana@example.com', firstname: 'Ana', lastname: 'Lind', username: 'AnaLind', token: 't' } }];
  }

  _getCurrentDoc() {
    const d = this.doc;
    if (!d) return [300001];
    const name = d.filePath.split('/').pop();
    return [0, [{ id: d.id, aiFileId: '', name, size: 1, isCurrentDoc: true, drive: 'local', filePath: d.filePath, account_id: '' }]];
  }

  _isCurrentDocModified() {
    return this.doc ? [0, this.doc.modified] : [300001];
  }

  _getFilePageCount() {
    return this.doc ? [0, { pageCount: this.doc.pages.length }] : [300001];
  }

  _createProgressBar({ title }) {
    this.progress = [{ title, position: 0 }];
    return [0];
  }

  _updateProgressBar({ currentPos, title }) {
    (this.progress || []).push({ title, position: currentPos });
    return [0];
  }

  _destroyProgressBar() {
    return [0];
  }

  _getFileTexts({ pageIndex }) {
    if (!this.doc) return [300001];
    if (pageIndex === -1) return [0, this.doc.pages];
    return pageIndex >= 0 && pageIndex < this.doc.pages.length ? [0, [this.doc.pages[pageIndex]]] : [400013];
  }

  // The recognition gives each page without text the text of `ocrTexts` (page -> text); a
  // cancelled dialog answers 1.
  _runFileOCR() {
    if (!this.doc) return [300001];
    if (this.ocrCancelled) return [1];
    this.doc.pages = this.doc.pages.map((text, page) => (text.trim() ? text : (this.ocrTexts || {})[page] || text));
    return [0];
  }

  _findTextList({ file, textList, startPage, endPage }) {
    if (!file || !file.id) return [100004];
    let total = 0;
    const data = textList.map(([text, flags]) => {
      const body = text.trim().split(/\s+/).map((w) => w.replace(/[.*+?^${}()|[\]\\]/g, '\\$&')).join('\\s+');
      const edge = flags & 2 ? ['(?<![\\p{L}\\p{N}])', '(?![\\p{L}\\p{N}])'] : ['', ''];
      const re = new RegExp(edge[0] + body + edge[1], flags & 1 ? 'gu' : 'giu');
      const list = [];
      for (let page = startPage; page <= endPage; page++) {
        for (const m of this.doc.pages[page].matchAll(re)) list.push({ page, start: m.index, length: m[0].length });
      }
      const searchKey = `{KEY-${++this._keys}}`;
      this.searches.set(searchKey, list);
      this.keyDocs.set(searchKey, this.doc.id); // a key belongs to the file searched
      total += list.length;
      return { count: list.length, searchKey };
    });
    return total ? [0, data] : [400005];
  }

  _annotOf(searchKey, index) {
    return [...this.annots].find(([, a]) => a.searchKey === searchKey && a.index === index);
  }

  _addAnnot({ searchKey, index, type, uniqueIDName }) {
    if (type !== 'highlight' && type !== 'redact') return [100015];
    if (!String(uniqueIDName).startsWith('ai_plugin_')) return [100014];
    const list = this.searches.get(searchKey);
    if (!list || !list[index] || this.keyDocs.get(searchKey) !== this.doc.id) return [400005];
    if (this._annotOf(searchKey, index)) return [0, { message: 'the annot has been added' }];
    this.annots.set(uniqueIDName, { searchKey, index, doc: this.doc.id });
    this._modified();
    return [0, null];
  }

  _removeAnnots({ searchKey, index, type, uniqueIDPrefix }) {
    if (!type) return [100013];
    if (!uniqueIDPrefix) return [100014];
    const found = this._annotOf(searchKey, index);
    if (!found) return [400007];
    this.annots.delete(found[0]);
    this._modified();
    return [0, null];
  }

  _markTexts({ searchKey, index }) {
    const list = this.searches.get(searchKey);
    return list && list[index] ? [0, null] : [400005];
  }

  _clearMarkTexts() {
    return [0, null];
  }

  _hasOtherRedact() {
    return [0, this.otherRedact];
  }

  _redactApply(params) {
    // An empty parameter text applies every Redact mark, the user's own too.
    const all = params === '';
    const uniqueIDNames = all ? [...this.annots.keys()] : params.uniqueIDNames;
    if (all && this.promptAnswer !== 1) return [400024];
    if (all) this.otherRedact = false;
    if (!all && (!Array.isArray(uniqueIDNames) || !uniqueIDNames.length)) return [100014];
    const failed = uniqueIDNames.filter((n) => !this.annots.has(n));
    if (!all && failed.length === uniqueIDNames.length) return [400023];
    if (this.promptAnswer !== 1) return [400024];
    this.applied = uniqueIDNames.filter((n) => this.annots.has(n));
    for (const name of this.applied) {
      const { searchKey, index } = this.annots.get(name);
      const { page, start, length } = this.searches.get(searchKey)[index];
      const text = this.doc.pages[page];
      // The match's characters go, the others keep their places.
      if (!this.leakOnApply) this.doc.pages[page] = text.slice(0, start) + ' '.repeat(length) + text.slice(start + length);
      this.annots.delete(name);
    }
    this._modified();
    return [0, all ? [] : failed];
  }

  // A batch: the plug-in opens each queued file as the current document and saves it by its own
  // output rule, with no dialog.
  _startBatchRedaction() {
    this.batchStarted = true;
    const pageCount = this.batchQueue.reduce((n, i) => n + (i === null ? 0 : this.docs[i].pages.length), 0);
    return [0, { count: this.batchQueue.length, pageCount }];
  }

  _openNextFileForBatch() {
    if (!this.batchStarted) return [1];
    if (!this.batchQueue.length) return [-1];
    const next = this.batchQueue.shift();
    if (next === null) return [1];
    this.currentIndex = next;
    return [0, null];
  }

  _closeCurrentFile() {
    this.currentIndex = -1;
    return [0, null];
  }

  _endBatchRedaction(params) {
    if (![0, 200001, 200009, 200010].includes(params && params.ret)) return [100031];
    this.batchEnd = params;
    return [0, null];
  }

  _saveDocument({ isSaveAs, suffix }) {
    if (!this.doc) return [300001];
    if (this.batchQueue) {
      this.batchSaved.push(this.doc.filePath);
      return [0, null];
    }
    if (isSaveAs) {
      const path = this.savePath(this.doc, suffix);
      if (path === null) return [400025];
      this.doc.filePath = path;
    }
    this.doc.modified = false;
    this.emit('ev-doc-saved', { id: this.doc.id });
    return [0, null];
  }
}

module.exports = { FakePlugin };
