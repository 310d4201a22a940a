// The redaction workflow over the editor's bridge: read the current document's text, detect,
// locate the findings, mark each match with a Redact annotation, let the user review, apply and
// save a redacted copy. One review session per document; the bridge is injected, so the same
// code runs against the editor and against a test double.
(function (root) {
  'use strict';

  const req = (file, name) => (typeof require === 'function' ? require(file) : root.Sablemark[name]);
  const detectors = req('./detectors.js', 'detectors');
  const { BridgeError } = req('./bridge.js', 'bridge');
  const messages = req('./messages.js', 'messages');
  const textless = req('./textless_pages.js', 'textlessPages');

  // The editor's search flags.
  const MATCH_CASE = 0x1;
  const WHOLE_WORD = 0x2;
  // Every annotation name of ours starts so; the editor keeps the convention.
  const NAME_PREFIX = 'ai_plugin_';
  const SAVE_SUFFIX = '_redacted';
  // Codes by which the editor says that a mark to remove is not there any more.
  const MARK_GONE = [400006, 400007];

  const KIND_ORDER = [...detectors.KINDS, detectors.TERM];
  // A document of more pages is scanned with the editor's progress window shown and the page's
  // status moving as its findings are located and marked.
  const PIECEWISE_PAGES = 100;
  // Pages located between two progress reports.
  const PAGES_PER_REPORT = 100;
  // Marks placed between two progress reports.
  const MARKS_PER_REPORT = 250;
  // Marks placed between two moves of the page's own progress.
  const MARKS_PER_STEP = 25;
  // Marks sent together, the editor serving them one after the other.
  const MARKS_PER_RUN = 50;
  // Seconds without a request after which the editor may close its progress window.
  const PROGRESS_TIMEOUT = 60;

  // Findings grouped by page, pages in ascending order.
  function byPage(findings) {
    const groups = new Map();
    for (const finding of findings) {
      if (!groups.has(finding.page)) groups.set(finding.page, []);
      groups.get(finding.page).push(finding);
    }
    return [...groups.entries()].sort((a, b) => a[0] - b[0]);
  }

  // A failure of the workflow itself, not of the editor.
  class WorkflowError extends Error {
    constructor(message) {
      super(message);
      this.name = 'WorkflowError';
    }
  }

  // The user stopped the scan.
  class CancelledError extends Error {
    constructor() {
      super('Cancelled');
      this.name = 'CancelledError';
    }
  }

  // The file name the editor offers for the copy: the stem, the suffix, the extension.
  // A page's text in 32 bits (FNV-1a), to tell whether it changed between two scans.
  function textHash(text) {
    let hash = 0x811c9dc5;
    const body = typeof text === 'string' ? text : '';
    for (let i = 0; i < body.length; i++) hash = Math.imul(hash ^ body.charCodeAt(i), 0x01000193);
    return hash >>> 0;
  }

  // A finding as the user reviews it: the same text of the same kind on the same page.
  function reviewKey(finding) {
    return `${finding.page}\u0000${finding.kind}\u0000${finding.text}`;
  }

  function offeredName(name, suffix = SAVE_SUFFIX) {
    const dot = name.lastIndexOf('.');
    return dot > 0 ? name.slice(0, dot) + suffix + name.slice(dot) : name + suffix;
  }

  // A document's review: its findings, what the user decided and what became of them.
  function newSession(doc, batch) {
    return {
      doc,
      pageCount: 0,
      findings: [],
      notices: [],
      stale: false,
      marked: false,
      applied: false,
      saved: false,
      output: null,
      summary: null,
      unmarked: [],
      verification: null,
      batch,
      textless: [], // pages without text to search
      scanned: true, // false: opened for the user's own marks, before any scan
    };
  }

  class Workflow {
    constructor({ bridge, nameBase, onChange } = {}) {
      this.bridge = bridge;
      this.sessions = new Map(); // document id -> its review session
      this.current = null; // the session shown, or null
      this.activeDoc = null; // the editor's current document as last asked, or null
      this._activeId = null; // the active document's id as the editor's last event gave it
      this._waiting = []; // scans paused until their document is active again: {id, resolve, reject}
      this.busy = false;
      this.activity = '';
      this.status = '';
      this.error = null;
      this.account = null;
      this.accountError = null;
      this.page = 'scan'; // what the pane shows: 'scan' or 'account', as the editor asks
      this.progress = null; // how far the running scan is, 0 to 1, or null
      this._scanning = null; // the session of the running scan
      this._cancelRequested = false;
      this._switches = 0; // how many times the editor said another tab became active
      this._names = 0;
      this._nameBase =
        nameBase || `${Date.now().toString(36)}${Math.floor(Math.random() * 1e6).toString(36)}`;
      this._listeners = onChange ? [onChange] : [];
      this._tail = Promise.resolve();
    }

    onChange(listener) {
      this._listeners.push(listener);
    }

    _notify() {
      for (const listener of this._listeners) listener(this);
    }

    // Runs one user-level operation after those before it; records a failure for the user and
    // rethrows it to the caller.
    _run(activity, operation) {
      const result = this._tail.then(async () => {
        this.busy = true;
        this.activity = activity;
        this.error = null;
        this._notify();
        try {
          return await operation();
        } catch (error) {
          this.error = error.message;
          this.status = '';
          throw error;
        } finally {
          this.busy = false;
          this.activity = '';
          this._notify();
        }
      });
      this._tail = result.catch(() => {});
      return result;
    }

    _call(command, params) {
      return this.bridge.call(command, params);
    }

    // Sends `count` requests that do not depend on each other, request i being what make(i)
    // gives: [command, params]. For a batch's session they go out together and the editor
    // answers them in order; otherwise each is made and sent when its promise is asked for, as
    // in a plain loop. Gives a function that, called with i, gives the promise of request i;
    // callers take them in order, so the first failure shows where a plain loop would stop.
    _requests(session, count, make) {
      if (!session.batch) return (i) => this._whenActive(session).then(() => this._call(...make(i)));
      const sent = Array.from({ length: count }, (_, i) => {
        const [command, params] = make(i);
        return this.bridge.call(command, params, { pipelined: true });
      });
      // A failure after the first is not waited for; it must not count as unhandled.
      for (const promise of sent) promise.catch(() => {});
      return (i) => sent[i];
    }

    // The editor's commands act on the active document, so a scan whose document went to the
    // background waits until the user brings it back (or closes it) rather than reading or
    // marking another document.
    _whenActive(session) {
      if (this._activeId === null || this._activeId === session.doc.id) return Promise.resolve();
      if (this.sessions.get(session.doc.id) !== session) {
        return Promise.reject(new WorkflowError('The document was closed before its scan ended.'));
      }
      const activity = this.activity;
      this.activity = `Paused until ${session.doc.name || 'the scanned document'} is active again`;
      this._notify();
      return new Promise((resolve, reject) => {
        this._waiting.push({ id: session.doc.id, resolve, reject });
      }).finally(() => {
        this.activity = activity;
        this._notify();
      });
    }

    // Lets the paused scans of a document go on (or fail, when it closed).
    _settleWaiting(id, error) {
      const settled = this._waiting.filter((w) => w.id === id);
      this._waiting = this._waiting.filter((w) => w.id !== id);
      for (const waiter of settled) {
        if (error) waiter.reject(error);
        else waiter.resolve();
      }
    }

    // ai_plugin_redact_<kind>_<base>_<serial>: the kind, letters and digits only, lets a job
    // that reads the document's marks count the findings by kind.
    _newName(kind) {
      this._names += 1;
      const tag = String(kind).replace(/[^A-Za-z0-9]/g, '') || 'other';
      return `${NAME_PREFIX}redact_${tag}_${this._nameBase}_${this._names}`;
    }

    // The signed-in user, for the header. A failure is shown there and blocks nothing.
    loadAccount() {
      return this._tail.then(async () => {
        try {
          const data = await this._call('getUser');
          this.account = (data && data.info) || null;
          this.accountError = null;
          if (this.account && this.page === 'account' && this.usage) await this.usage.load();
        } catch (error) {
          this.account = null;
          this.accountError = error.message;
        }
        this._notify();
        return this.account;
      });
    }

    // The editor's sign-in window; the account is read again afterwards. A window the user
    // cancels is no failure.
    signIn() {
      return this._run('Signing in', async () => {
        try {
          await this._call('loginIn');
        } catch (error) {
          if (!(error instanceof BridgeError) || error.ret !== 200001) throw error;
          this.status = 'Not signed in.';
        }
      }).then(() => this.loadAccount());
    }

    // Asks the editor for its current document; null when none is open. While an operation runs
    // (a scan waiting for its own document to come back, say) the active document is read at
    // once instead of after it, so the pane names the document the user is looking at.
    refreshDocument() {
      if (this.busy) return this._peekDocument();
      return this._run('Looking for the current document', async () => {
        try {
          this.activeDoc = await this._currentDoc();
        } catch (error) {
          if (!(error instanceof BridgeError) || error.ret !== 300001) throw error;
          this.activeDoc = null;
          this.status = 'Open a PDF document to begin.';
        }
        if (this.activeDoc && !this.current) this.status = `Ready to scan ${this.activeDoc.name || 'the document'}.`;
        return this.activeDoc;
      });
    }

    // A review without findings for the active document, whose only marks are those the user
    // drew in the editor: the pane lists them and Apply & save can take them before any scan.
    reviewOwnMarks(id) {
      return this._run('Looking for the current document', async () => {
        if (this.current) return this.current;
        const doc = await this._currentDoc();
        if (doc.id !== id) return null;
        const session = newSession(doc, false);
        session.scanned = false;
        this.sessions.set(doc.id, session);
        this.current = session;
        this.activeDoc = doc;
        this.status = 'Your marks are listed: Apply & save redacts them, Scan finds more.';
        return session;
      });
    }

    async _peekDocument() {
      try {
        const doc = await this._currentDoc();
        if (doc.id === this._activeId && !this.current) {
          this.activeDoc = doc;
          this._notify();
        }
        return doc;
      } catch (error) {
        return null;
      }
    }

    async _currentDoc() {
      const list = await this._call('getCurrentDoc');
      if (!Array.isArray(list) || !list[0] || typeof list[0].id !== 'string') {
        throw new BridgeError('getCurrentDoc', null, list);
      }
      return list[0];
    }

    // Scans the current document: options {terms: [..], wholeWord, kinds, batch, progressWindow},
    // batch true for a batch's document, progressWindow for a run nobody watches in the pane
    // (the editor's progress window shows it instead). A document scanned before keeps the marks
    // of its earlier scan that the new scan finds again, unchanged, and loses the others, so no
    // match is marked twice and a second scan costs no more than the first. A scan that the user
    // cancels takes its marks away again and ends without a failure.
    scan(options = {}) {
      return this._run('Scanning', async () => {
        const doc = await this._currentDoc();
        this.activeDoc = doc;
        this._activeId = doc.id; // as the editor says now, whatever events came before
        const previous = this.sessions.get(doc.id);
        // What the user dropped from an earlier scan stays dropped when it is found again.
        const dropped = new Set(previous && !previous.applied
          ? previous.findings.filter((f) => !f.kept).map(reviewKey) : []);
        // Marks of an earlier scan of the same, unchanged text fit the same matches again.
        const reusable = previous && !previous.applied && !previous.stale;
        if (previous) await (reusable ? this._clearSelection(previous) : this._retire(previous));
        const session = newSession(doc, Boolean(options.batch));
        this.sessions.set(doc.id, session);
        this.current = session;
        this._scanning = session;
        this._cancelRequested = false;

        const reads = this._requests(session, 3, (i) => [
          ['isCurrentDocModified'], ['getFilePageCount'], ['getFileTexts', { pageIndex: -1 }]][i]);
        if ((await reads(0)) === true) {
          session.notices.push('The document has unsaved changes: text typed into form fields ' +
            'since the last save is not scanned.');
        }
        const count = await reads(1);
        session.pageCount = (count && count.pageCount) || 0;
        const windowed = session.pageCount > PIECEWISE_PAGES && Boolean(options.batch || options.progressWindow);
        if (windowed) await this._progressStart('Scanning the document');
        try {
          await this._progress(`Reading ${session.pageCount} page(s)`, 0, windowed);
          const texts = await reads(2);
          if (!Array.isArray(texts)) throw new BridgeError('getFileTexts', null, texts);
          if (texts.length !== session.pageCount) {
            session.notices.push(`The editor gave the text of ${texts.length} of ${session.pageCount} pages.`);
          }
          session.pageHashes = texts.map(textHash);
          session.textless = textless.pagesWithoutText(texts);
          const textlessNotice = textless.noticeFor(session.textless);
          if (textlessNotice) session.notices.push(textlessNotice);

          const terms = options.terms || [];
          session.findings = this._findingsOf(
            detectors.detectDocument(texts, {
              terms, wholeWord: options.wholeWord, kinds: options.kinds,
              minConfidence: options.minConfidence, regions: options.regions,
            }),
            Boolean(options.wholeWord)
          );
          for (const finding of session.findings) {
            if (dropped.has(reviewKey(finding))) finding.kept = false;
          }
          await this._locate(session, windowed);
          const left = reusable ? this._takeOverMarks(session, previous) : [];
          for (const [finding, match] of left) await this._removeMark(session, finding, match);
          await this._markAll(session, windowed);
          this._checkCancelled(); // pressed during the last run of marks
        } catch (error) {
          if (!(error instanceof CancelledError)) throw error;
          await this._cancelScan(session, reusable ? previous : null);
          return null;
        } finally {
          this._scanning = null;
          this.progress = null;
          if (windowed) await this._progressEnd();
        }
        const located = session.findings.filter((f) => f.matches.length);
        const missing = session.findings.length - located.length;
        if (missing) {
          session.notices.push(`${missing} finding(s) could not be located in the document and are not marked.`);
        }
        this.status = located.length
          ? `${located.length} finding(s) marked for redaction. Review them, then apply.`
          : 'Nothing to redact was found.';
        return session;
      });
    }

    // True while a scan runs that the user can stop.
    get cancellable() {
      return Boolean(this._scanning && !this._scanning.batch);
    }

    // Asks the running scan to stop before its next command.
    cancelScan() {
      if (!this.cancellable || this._cancelRequested) return;
      this._cancelRequested = true;
      this.activity = 'Cancelling';
      this._notify();
    }

    _checkCancelled() {
      if (this._cancelRequested) throw new CancelledError();
    }

    // Ends a cancelled scan: the marks it made (and those it took over from the scan before)
    // go, and the document is left with none of ours.
    async _cancelScan(session, previous) {
      this.activity = 'Cancelling: taking the marks of the scan away';
      this._notify();
      await this._retire(session);
      if (previous) await this._retire(previous);
      this.sessions.delete(session.doc.id);
      if (this.current === session) this.current = null;
      this.status = 'Cancelled: the scan stopped and nothing is marked.';
    }

    // Gives the new scan's findings the marks of the earlier scan where the same search on a
    // page whose text is the same found as many matches: they are the same matches. Gives the
    // earlier marks nobody took, [finding, match] pairs of `previous`, to be removed.
    _takeOverMarks(session, previous) {
      const identity = (f) => `${f.page}\u0000${f.flags}\u0000${f.searchText}`;
      const earlier = new Map(previous.findings.map((f) => [identity(f), f]));
      const samePage = (page) => previous.pageHashes && previous.pageHashes[page] === session.pageHashes[page];
      for (const finding of session.findings) {
        const old = earlier.get(identity(finding));
        if (!old || !old.searchKey || old.matches.length !== finding.matches.length || !samePage(finding.page)) continue;
        if (!finding.kept && old.matches.some((m) => m.name)) continue;
        earlier.delete(identity(finding));
        finding.searchKey = old.searchKey;
        finding.matches = old.matches.map((m) => ({ ...m }));
        for (const match of old.matches) match.name = null; // the marks are the new scan's now
      }
      return [...earlier.values()].flatMap((f) => f.matches.filter((m) => m.name).map((m) => [f, m]));
    }

    // Turns detections into findings with what the search needs. Two detections that would
    // search for the same text on the same page are one finding.
    _findingsOf(detected, wholeWord) {
      const seen = new Set();
      const findings = [];
      for (const d of detected) {
        const isTerm = d.kind === detectors.TERM;
        const searchText = isTerm ? d.term : d.text;
        const flags = isTerm ? (wholeWord || d.wholeWord ? WHOLE_WORD : 0) : MATCH_CASE | WHOLE_WORD;
        const key = `${d.page}\u0000${flags}\u0000${isTerm ? searchText.toLowerCase() : searchText}`;
        if (seen.has(key)) continue;
        seen.add(key);
        findings.push({
          id: `f${findings.length + 1}`,
          kind: d.kind,
          text: d.text,
          page: d.page,
          confidence: d.confidence,
          searchText,
          flags,
          searchKey: null,
          matches: [], // {index, name}: name is the mark's annotation name, null when unmarked
          kept: true,
          shown: -1,
        });
      }
      return findings;
    }

    // Marks every kept match not marked yet, the progress moving as it goes. The marks go to the
    // editor in runs of requests that do not wait for each other's replies: a mark names its
    // match by a search key of this document only, so one that reaches another document (the
    // user switched tabs meanwhile) fails there and is made again once this one is back.
    async _markAll(session, windowed) {
      const marks = session.findings
        .filter((finding) => finding.kept)
        .flatMap((finding) => finding.matches.filter((m) => !m.name).map((match) => [finding, match]));
      const every = windowed ? MARKS_PER_REPORT : MARKS_PER_STEP;
      const run = session.batch ? marks.length : MARKS_PER_RUN;
      for (let from = 0; from < marks.length; from += run) {
        this._checkCancelled();
        if (!session.batch) await this._whenActive(session);
        const switches = this._switches;
        const sent = marks.slice(from, from + run).map(([finding, match]) => {
          const name = this._newName(finding.kind);
          const reply = this.bridge.call('addAnnot', this._markParams(finding, match, name), { pipelined: true });
          reply.catch(() => {}); // failures are taken in order below
          return [name, reply];
        });
        // Every reply of the run is taken, also after a failure, so that each mark the editor
        // made is known (and can be taken away again).
        let failure = null;
        for (const [k, [name, reply]] of sent.entries()) {
          const i = from + k;
          if (i % every === 0) {
            await this._progress(`Marking ${i + 1} of ${marks.length}`, 0.5 + i / marks.length / 2, windowed);
          }
          const [finding, match] = marks[i];
          try {
            let data;
            try {
              data = await reply;
            } catch (error) {
              if (!(error instanceof BridgeError) || session.batch || this._switches === switches) throw error;
              await this._whenActive(session);
              data = await this._call('addAnnot', this._markParams(finding, match, name));
            }
            this._takeMark(match, name, data);
          } catch (error) {
            failure = failure || error;
          }
        }
        if (failure) throw failure;
      }
    }

    // The scan's progress: the page's own status always, the editor's progress window when the
    // scan has one. A window the editor cannot show does not stop the scan.
    async _progressStart(title) {
      try {
        await this._call('createProgressBar', { title, timeout: PROGRESS_TIMEOUT });
      } catch (error) {
        if (!(error instanceof BridgeError)) throw error;
      }
    }

    async _progress(title, fraction, windowed) {
      this.activity = title;
      this.progress = Math.min(1, Math.max(0, fraction));
      this._notify();
      if (!windowed) return;
      try {
        await this._call('updateProgressBar', { currentPos: Math.round(this.progress * 100), title });
      } catch (error) {
        if (!(error instanceof BridgeError)) throw error;
      }
    }

    async _progressEnd() {
      try {
        await this._call('destroyProgressBar');
      } catch (error) {
        if (!(error instanceof BridgeError)) throw error;
      }
    }

    // Searches each page that has findings for them, that page only, so every match of a
    // finding lies on the finding's page.
    async _locate(session, windowed = false) {
      const groups = byPage(session.findings);
      const found = this._requests(session, groups.length, (i) => ['findTextList', {
        file: { id: session.doc.id },
        textList: groups[i][1].map((f) => [f.searchText, f.flags]),
        startPage: groups[i][0],
        endPage: groups[i][0],
      }]);
      const every = windowed ? PAGES_PER_REPORT : 1;
      for (const [i, [page, onPage]] of groups.entries()) {
        if (i % every === 0) {
          await this._progress(`Locating on page ${page + 1} of ${session.pageCount}`, i / groups.length / 2, windowed);
        }
        this._checkCancelled();
        let results;
        try {
          results = await found(i);
        } catch (error) {
          if (error instanceof BridgeError && error.ret === 400005) continue; // none located
          throw error;
        }
        if (!Array.isArray(results) || results.length !== onPage.length) {
          throw new BridgeError('findTextList', null, results);
        }
        onPage.forEach((finding, i) => {
          const { count, searchKey } = results[i] || {};
          if (!Number.isInteger(count) || count <= 0) return;
          finding.searchKey = searchKey;
          for (let index = 0; index < count; index++) finding.matches.push({ index, name: null });
        });
      }
    }

    async _addMark(finding, match) {
      const name = this._newName(finding.kind);
      this._takeMark(match, name, await this._call('addAnnot', this._markParams(finding, match, name)));
    }

    _markParams(finding, match, name) {
      return { searchKey: finding.searchKey, index: match.index, type: 'redact', uniqueIDName: name };
    }

    // Notes the reply of addAnnot: a match that the editor holds as marked already keeps the
    // mark it has.
    _takeMark(match, name, data) {
      match.name = data && data.message ? null : name;
      match.preexisting = Boolean(data && data.message);
    }

    async _removeMark(session, finding, match) {
      try {
        await this._call('removeAnnots', {
          searchKey: finding.searchKey,
          index: match.index,
          type: 'redact',
          uniqueIDPrefix: NAME_PREFIX,
        });
      } catch (error) {
        if (!(error instanceof BridgeError) || !MARK_GONE.includes(error.ret)) throw error;
        session.notices.push(error.message);
      }
      match.name = null;
    }

    async _clearSelection(session) {
      if (!session.marked) return;
      await this._call('clearMarkTexts');
      session.marked = false;
    }

    // Takes the marks of an unapplied session away and clears a selection it made.
    async _retire(session) {
      await this._clearSelection(session);
      if (session.applied) return;
      for (const finding of session.findings) {
        for (const match of finding.matches) {
          if (match.name) await this._removeMark(session, finding, match);
        }
      }
    }

    _reviewable(findingIds) {
      const session = this.current;
      if (!session || session.applied) throw new WorkflowError('There is nothing to review: scan a document first.');
      const ids = new Set(findingIds);
      return session.findings.filter((f) => ids.has(f.id) && f.matches.length);
    }

    // Keeps (marks) or drops (unmarks) findings by id.
    setKept(findingIds, kept) {
      const ids = Array.isArray(findingIds) ? findingIds : [findingIds];
      return this._run(kept ? 'Marking' : 'Dropping', async () => {
        const session = this.current;
        for (const finding of this._reviewable(ids)) {
          try {
            for (const match of finding.matches) {
              if (kept && !match.name && !match.preexisting) await this._addMark(finding, match);
              if (!kept && match.name) await this._removeMark(session, finding, match);
            }
          } finally {
            finding.kept = finding.matches.some((m) => m.name || m.preexisting);
          }
        }
        const count = this._keptNames(session).length;
        this.status = `${count} mark(s) will be redacted.`;
      });
    }

    setKindKept(kind, kept) {
      const ids = this.current ? this.current.findings.filter((f) => f.kind === kind).map((f) => f.id) : [];
      return this.setKept(ids, kept);
    }

    // Selects a finding's next match in the editor and scrolls to it.
    show(findingId) {
      return this._run('Showing', async () => {
        const [finding] = this._reviewable([findingId]);
        if (!finding) throw new WorkflowError('This finding is not in the document\'s text layer.');
        finding.shown = (finding.shown + 1) % finding.matches.length;
        await this._call('markTexts', { searchKey: finding.searchKey, index: finding.matches[finding.shown].index });
        this.current.marked = true;
        this.status = `Showing "${finding.text}" on page ${finding.page + 1}` +
          (finding.matches.length > 1 ? ` (${finding.shown + 1} of ${finding.matches.length}).` : '.');
      });
    }

    _keptNames(session) {
      return session.findings.flatMap((f) => f.matches.filter((m) => m.name).map((m) => m.name));
    }

    // The marks that would be applied now.
    keptCount() {
      return this.current ? this._keptNames(this.current).length : 0;
    }

    // Whether Apply has anything to burn in: kept findings, or the user's own ticked marks.
    canApply() {
      const session = this.current;
      if (!session || session.applied) return false;
      return this.keptCount() > 0 || Boolean(this.userMarks && this.userMarks.listed(session));
    }

    // Burns the kept marks in (the editor asks the user first), then saves the copy; a No at the
    // prompt ends it without a failure, the session left as it was (`cancelled` says so). In a batch
    // the editor applies without asking and names the copy itself; the check for other marks is
    // left out there, since it looks at the active document, not the batch's.
    apply() {
      return this._run('Applying', async () => {
        const session = this.current;
        if (!session || session.applied) throw new WorkflowError('There is nothing to apply: scan a document first.');
        const names = this._keptNames(session);
        const ownListed = Boolean(this.userMarks && this.userMarks.listed(session));
        if (!names.length && !ownListed) throw new WorkflowError('No finding is marked for redaction.');
        if (session.marked) {
          await this._call('clearMarkTexts');
          session.marked = false;
        }
        const others = !session.batch && (await this._call('hasOtherRedact')) === true;
        const withOwn = others && Boolean(this.userMarks && this.userMarks.included(session));
        if (!names.length && !withOwn) {
          if (this.userMarks) this.userMarks.forgetPresence(session);
          throw new WorkflowError('Nothing is marked for redaction: your marks are no longer in the document.');
        }
        if (others && !withOwn) {
          session.notices.push('The document holds redaction marks that this page did not make; ' +
            'they are left as they are.');
        }
        try {
          if (withOwn) await this.userMarks.applyAll(session, names);
          else await this._applyNames(session, names);
        } catch (error) {
          // The user said no at the editor's prompt: nothing broke, the review goes on.
          if (!(error instanceof BridgeError) || error.ret !== 400024) throw error;
          session.cancelled = error;
          this.status = 'Cancelled: nothing was redacted. The findings stay marked for review.';
          return session;
        }
        session.cancelled = null;
        session.applied = true;
        session.userMarksApplied = withOwn;
        if (this.usage) await this.usage.reportRedaction(session);
        if (session.unmarked.length) {
          this.status = 'Not saved yet: some ticked findings are no longer marked in the document.';
          return session;
        }
        this.status = withOwn && !names.length ? 'Your marks were redacted.' : 'Redaction applied.';
        this._notify();
        await this._save(session);
        return session;
      });
    }

    // Applies the marks named; a mark the editor no longer holds (undone, deleted or moved away
    // in the editor since the scan) leaves its finding in `session.unmarked`, said plainly.
    async _applyNames(session, names) {
      const failed = await this._call('redactApply', { uniqueIDNames: names });
      const notApplied = new Set(Array.isArray(failed) ? failed : []);
      const applying = new Set(names);
      const unmarked = new Set();
      for (const finding of session.findings) {
        for (const match of finding.matches) {
          if (!match.name || !applying.has(match.name)) continue;
          match.applied = !notApplied.has(match.name);
          if (!match.applied) {
            match.name = null;
            match.unmarked = true;
            unmarked.add(finding);
          }
        }
      }
      session.unmarked = [...unmarked];
      if (session.unmarked.length) {
        const list = session.unmarked.map((f) => `"${f.text}" (page ${f.page + 1})`).join(', ');
        session.notices.push(`${session.unmarked.length} ticked finding(s) are no longer marked in the ` +
          `document and were not redacted: ${list}. Mark them again, or save without them.`);
      }
    }

    // The ticked findings whose marks went away in the editor before the apply.
    unmarkedFindings() {
      return this.current && this.current.unmarked ? this.current.unmarked : [];
    }

    // Marks the findings that lost their marks again, applies them and saves the copy.
    remarkAndApply() {
      return this._run('Marking again', async () => {
        const session = this.current;
        if (!session || !session.applied || session.saved || !session.unmarked.length) {
          throw new WorkflowError('No finding waits to be marked again.');
        }
        const names = [];
        for (const finding of session.unmarked) {
          for (const match of finding.matches) {
            if (!match.unmarked) continue;
            await this._addMark(finding, match);
            match.unmarked = false;
            if (match.name) names.push(match.name);
          }
        }
        if (names.length) await this._applyNames(session, names);
        else session.unmarked = [];
        if (session.unmarked.length) {
          throw new WorkflowError('Some findings could not be marked again; the copy is not saved.');
        }
        this.status = 'Redaction applied.';
        this._notify();
        await this._save(session);
        return session;
      });
    }

    // Saves the redacted copy; also what the user retries after cancelling the save dialog.
    // `unmarked` allows saving a session that has nothing to apply.
    save({ unmarked = false } = {}) {
      return this._run('Saving', async () => {
        const session = this.current;
        if (!session || (!session.applied && !unmarked)) {
          throw new WorkflowError('Apply the redaction before saving the copy.');
        }
        await this._save(session);
        return session;
      });
    }

    async _save(session) {
      await this._call('saveDocument', { isSaveAs: true, suffix: SAVE_SUFFIX });
      const after = await this._currentDoc();
      // A batch's copy is named by the editor's output options; the page does not learn it.
      session.output = session.batch ? null : after.filePath || after.name || offeredName(session.doc.name);
      session.saved = true;
      if (session.applied) {
        this.activity = 'Checking the saved copy';
        this._notify();
        session.verification = await this._verify(session, after);
      }
      session.summary = summarize(session);
      this.status = !session.applied
        ? 'Copy saved; there was nothing to redact.'
        : session.verification.remaining.length
          ? 'The copy is saved, but redacted findings remain in it.'
          : 'Redaction applied, the copy saved and checked.';
    }

    // Reads the saved copy (now the current document) again and searches each redacted finding
    // on its page once more, in the page's text (form fields included) and with the editor's
    // search. Returns {checked, remaining: [{kind, text, page}]}; a finding that cannot be
    // checked counts as remaining.
    async _verify(session, saved) {
      const redacted = session.findings.filter((f) => f.matches.some((m) => m.applied));
      const remaining = new Set();
      const groups = byPage(redacted);
      // The copy's text first, then the search of each page with redacted findings.
      const reads = this._requests(session, groups.length + 1, (i) => (i === 0
        ? ['getFileTexts', { pageIndex: -1 }]
        : ['findTextList', {
          file: { id: saved.id },
          textList: groups[i - 1][1].map((f) => [f.searchText, f.flags]),
          startPage: groups[i - 1][0],
          endPage: groups[i - 1][0],
        }]));
      let texts = null;
      try {
        texts = await reads(0);
      } catch (error) {
        if (!(error instanceof BridgeError)) throw error;
      }
      for (const finding of redacted) {
        const pageText = Array.isArray(texts) ? texts[finding.page] : undefined;
        if (typeof pageText !== 'string' || textHolds(pageText, finding)) remaining.add(finding);
      }
      for (const [i, [, onPage]] of groups.entries()) {
        let results;
        try {
          results = await reads(i + 1);
        } catch (error) {
          if (error instanceof BridgeError && error.ret === 400005) continue; // nothing found
          if (!(error instanceof BridgeError)) throw error;
          onPage.forEach((f) => remaining.add(f));
          continue;
        }
        onPage.forEach((finding, i) => {
          const count = Array.isArray(results) && results[i] ? results[i].count : undefined;
          if (!Number.isInteger(count) || count > 0) remaining.add(finding);
        });
      }
      const left = redacted.filter((f) => remaining.has(f));
      return {
        checked: redacted.length,
        remaining: left.map((f) => ({ kind: f.kind, text: f.text, page: f.page })),
      };
    }

    // Runs the current document through without anybody to decide: scans, keeps every finding,
    // applies and saves the copy (also with nothing found, so every document gets its copy).
    // Marks that went away before the apply are marked again. Gives the finished session.
    async runUnattended(scanOptions) {
      await this.scan({ ...scanOptions, progressWindow: true });
      let session = this.keptCount() ? await this.apply() : await this.save({ unmarked: true });
      if (session.cancelled) throw session.cancelled; // nobody is there to decide again
      if (!session.saved) session = await this.remarkAndApply();
      return session;
    }

    // Runs the editor's text recognition over the current document (its dialog first), so that
    // scanned pages get text to search; a scan afterwards reads it. True when it ran; a dialog
    // that is cancelled leaves the document as it was.
    recognizeText() {
      return this._run('Recognising the text of the pages', async () => {
        try {
          await this._call('runFileOCR', { isShowDlg: true });
        } catch (error) {
          if (!(error instanceof BridgeError) || error.ret !== 1) throw error;
          this.status = 'The text recognition was not run.';
          return false;
        }
        return true;
      });
    }

    // Shows the scan view or the account view.
    showPage(page) {
      this.page = page === 'account' ? 'account' : 'scan';
      this._notify();
    }

    // Drops a document's session, as its close does.
    forget(id) {
      const session = this.sessions.get(id);
      this.sessions.delete(id);
      if (this.current === session) this.current = null;
      if (this.activeDoc && this.activeDoc.id === id) this.activeDoc = null;
    }

    // Follows the editor's events.
    handleEvent(event) {
      if (!event) return;
      const id = event.data && event.data.id;
      if (event.name === 'ev-doc-activate') {
        this._activeId = id;
        this._switches++;
        this._settleWaiting(id);
      } else if (event.name === 'ev-doc-closed') {
        this._settleWaiting(id, new WorkflowError('The document was closed before its scan ended.'));
      }
      switch (event.name) {
        case 'ev-doc-activate':
          if (this.current && this.current.doc.id === id) return;
          this.current = this.sessions.get(id) || null;
          this.activeDoc = this.current ? this.current.doc : null;
          this.error = null;
          this.status = id === '0' ? 'No PDF document is active.'
            : this.current ? `Back to ${this.current.doc.name || 'the document'}.`
              : 'Another document is active. Scan it when ready.';
          break;
        case 'ev-doc-closed': {
          const hadSession = this.sessions.delete(id);
          const wasActive = Boolean(this.activeDoc && this.activeDoc.id === id);
          if (!hadSession && !wasActive) return;
          if (this.current && this.current.doc.id === id) this.current = null;
          if (wasActive) {
            this.activeDoc = null;
            this.status = 'The document was closed.';
          }
          break;
        }
        case 'ev-doc-modified': {
          // A change made while one of our commands runs is that command's own.
          const session = this.sessions.get(id);
          if (this.bridge.busy || !session || session.applied || session.stale) return;
          session.stale = true;
          session.notices.push('The document changed after the scan; scan again so the marks fit the text.');
          break;
        }
        case 'ev-user-change-page':
          this.page = event.data && event.data.page === 'my-plan' ? 'account' : 'scan';
          if (this.page === 'account') this.loadAccount();
          break;
        case 'ev-user-sign-out':
          this.account = null;
          this.accountError = 'Signed out.';
          break;
        default:
          return;
      }
      this._notify();
    }
  }

  // Whether a page's text still holds a finding's search text, by the finding's flags
  // (whitespace runs match any whitespace; terms ignore case unless the search does not).
  function textHolds(pageText, finding) {
    const body = finding.searchText.trim().split(/\s+/)
      .map((w) => w.replace(/[.*+?^${}()|[\]\\]/g, '\\$&')).join('\\s+');
    if (!body) return false;
    const edge = finding.flags & WHOLE_WORD ? ['(?<![\\p{L}\\p{N}])', '(?![\\p{L}\\p{N}])'] : ['', ''];
    return new RegExp(edge[0] + body + edge[1], finding.flags & MATCH_CASE ? 'u' : 'iu').test(pageText);
  }

  // The line the pane and the main job show for a verification.
  function verificationLine(verification) {
    const { checked, remaining } = verification;
    const head = `Verified: ${remaining.length} of ${checked} findings remain`;
    if (!remaining.length) return head;
    return `${head}: ${remaining.map((r) => `"${r.text}" (page ${r.page + 1})`).join(', ')}`;
  }

  // What a finished session reports: counts of the findings that were redacted, by kind.
  function summarize(session) {
    const findings = {};
    for (const kind of KIND_ORDER) findings[kind] = 0;
    const pages = new Set();
    let total = 0;
    for (const finding of session.findings) {
      if (!finding.matches.some((m) => m.applied)) continue;
      findings[finding.kind] += 1;
      pages.add(finding.page);
      total += 1;
    }
    return {
      file: session.doc.filePath || session.doc.name,
      output: session.output,
      pages: session.pageCount,
      findings,
      total,
      pagesWithFindings: pages.size,
      pagesWithoutText: session.textless || [],
      ...(session.userMarksApplied ? { userMarks: true } : {}),
      verified: session.verification,
    };
  }

  const api = { Workflow, WorkflowError, offeredName, summarize, verificationLine, KIND_ORDER, NAME_PREFIX, MATCH_CASE, WHOLE_WORD };
  if (typeof module === 'object' && module.exports) module.exports = api;
  else (root.Sablemark = root.Sablemark || {}).workflow = api;
})(typeof globalThis !== 'undefined' ? globalThis : this);
