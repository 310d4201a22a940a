// The user's own redaction marks: Redact annotations drawn in the editor (its Redact tool), not
// made by this page. When the editor says that the document changed, the page asks whether the
// document holds marks it did not make, and lists them beside its findings as "Your marks" (in the
// pane, before any scan too, in a review of them alone). The editor names no page for them, and
// the apply can take them only as "every mark of the document": while they are ticked, Apply
// burns in every Redact mark the document holds, the page's kept marks and the user's own
// together.
(function (root) {
  'use strict';

  class UserMarks {
    // beforeScan: look for the user's marks before any scan (the pane, not an unattended run).
    constructor({ workflow, beforeScan = false }) {
      this.workflow = workflow;
      this.beforeScan = beforeScan;
      this._docs = new Map(); // document id -> {present, included}
      this._asking = null; // the document id being asked about
    }

    // What the page knows of the document's own marks; present is null until it has asked.
    stateOf(id) {
      return this._docs.get(id) || { present: null, included: true };
    }

    // Whether the apply of the session should take the user's marks too.
    included(session) {
      const state = this.stateOf(session.doc.id);
      return state.present !== false && state.included;
    }

    // Whether the pane lists the user's marks, ticked, for the session: Apply can take them
    // even when no finding is kept.
    listed(session) {
      const state = this.stateOf(session.doc.id);
      return state.present === true && state.included && !session.applied;
    }

    // The marks went away in the editor (undone or deleted): the pane stops listing them.
    forgetPresence(session) {
      this._docs.set(session.doc.id, { ...this.stateOf(session.doc.id), present: false });
    }

    setIncluded(id, included) {
      this._docs.set(id, { ...this.stateOf(id), included });
      this.workflow._notify();
    }

    // Follows the editor's events: a change of the shown document (or its coming forward) may
    // have added or removed marks of the user's.
    handleEvent(event) {
      if (!event || !event.data) return;
      const session = this.workflow.current;
      if (event.name === 'ev-doc-closed') this._docs.delete(event.data.id);
      if (event.name !== 'ev-doc-modified' && event.name !== 'ev-doc-activate') return;
      if (!session && event.name === 'ev-doc-modified') {
        // Before any scan: asked again, now or once the page is idle (see follow).
        const state = this._docs.get(event.data.id);
        if (state) this._docs.set(event.data.id, { ...state, present: null });
        this.follow();
        return;
      }
      if (!session || session.batch || session.doc.id !== event.data.id || session.applied) return;
      // A change while one of the page's own commands runs is that command's.
      if (event.name === 'ev-doc-modified' && this.workflow.bridge.busy) return;
      this.refresh(session).catch(() => {});
    }

    // Asks the editor whether the session's document holds marks this page did not make. The
    // question is about the active document, which the session's is while its events arrive.
    // A failed question counts as none: the apply asks again.
    async refresh(session) {
      const id = session.doc.id;
      if (this._asking === id) return;
      this._asking = id;
      let present = false;
      try {
        present = (await this.workflow.bridge.call('hasOtherRedact')) === true;
      } finally {
        this._asking = null;
        this._docs.set(id, { ...this.stateOf(id), present });
        this.workflow._notify();
      }
    }

    // A listener of the workflow: a session that the page has not asked about yet (a new scan)
    // is asked about once the workflow is idle. A batch's document is never the active one, the
    // one the question is about.
    // Before any scan of the active document, marks of the user's open a review of them alone.
    follow() {
      const session = this.workflow.current;
      if (session && !session.batch && !session.applied && !this.workflow.busy &&
        this.stateOf(session.doc.id).present === null) {
        this.refresh(session).catch(() => {});
      }
      const active = this.workflow.activeDoc;
      if (this.beforeScan && !session && active && !this.workflow.busy &&
        this.stateOf(active.id).present === null && this._asking === null) {
        this.refresh({ doc: active })
          .then(() => this.stateOf(active.id).present && this.workflow.reviewOwnMarks(active.id))
          .catch(() => {});
      }
    }

    // Applies every Redact mark of the document (the editor asks the user first): the names of
    // the page's kept marks are all applied with it.
    async applyAll(session, names) {
      await this.workflow.bridge.call('redactApply', '');
      const applying = new Set(names);
      for (const finding of session.findings) {
        for (const match of finding.matches) if (applying.has(match.name)) match.applied = true;
      }
      session.unmarked = [];
      this._docs.set(session.doc.id, { ...this.stateOf(session.doc.id), present: false });
    }

    // The "Your marks" group of the findings list, or null when the document holds none.
    render(doc, session) {
      const state = this.stateOf(session.doc.id);
      if (!state.present || session.applied) return null;
      const box = doc.createElement('input');
      box.type = 'checkbox';
      box.checked = state.included;
      box.disabled = this.workflow.busy;
      box.title = 'Redact the marks you drew in the editor with the findings';
      box.dataset.userMarks = session.doc.id;
      box.addEventListener('change', () => this.setIncluded(session.doc.id, box.checked));
      const label = doc.createElement('span');
      label.className = 'kind';
      label.textContent = 'Your marks';
      const summary = doc.createElement('summary');
      summary.append(box, label);
      const line = doc.createElement('li');
      line.className = 'finding user-marks' + (state.included ? '' : ' dropped');
      line.textContent = state.included
        ? 'Areas you marked in the editor: redacted with the findings (every page).'
        : 'Areas you marked in the editor: left as they are.';
      const list = doc.createElement('ul');
      list.append(line);
      const group = doc.createElement('details');
      group.open = true;
      group.dataset.group = 'user-marks';
      group.append(summary, list);
      return group;
    }
  }

  const api = { UserMarks };
  if (typeof module === 'object' && module.exports) module.exports = api;
  else (root.Sablemark = root.Sablemark || {}).userMarks = api;
})(typeof globalThis !== 'undefined' ? globalThis : this);
