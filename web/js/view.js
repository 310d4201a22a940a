// The task pane's view: draws the workflow's state into the page and turns clicks into
// workflow operations. Document text is only ever put in as text, never as markup.
(function (root) {
  'use strict';

  const { KIND_ORDER, verificationLine } = root.Sablemark.workflow;

  const KIND_LABELS = {
    email: 'E-mail addresses',
    phone: 'Phone numbers',
    card: 'Payment cards',
    iban: 'Bank accounts (IBAN)',
    ssn: 'US Social Security numbers',
    nino: 'UK National Insurance numbers',
    nationalId: 'Other national ID numbers',
    passport: 'Passport numbers',
    dob: 'Dates of birth',
    recordNumber: 'Account, employee, customer and case numbers',
    address: 'Postal addresses',
    name: "People's names",
    term: 'Your terms',
  };

  function el(doc, tag, props = {}, children = []) {
    const node = doc.createElement(tag);
    for (const [key, value] of Object.entries(props)) {
      if (key === 'text') node.textContent = value;
      else if (key === 'className') node.className = value;
      else if (key.startsWith('data-')) node.setAttribute(key, value);
      else node[key] = value;
    }
    for (const child of children) if (child) node.appendChild(child);
    return node;
  }

  function createView(doc, workflow, options) {
    const $ = (id) => doc.getElementById(id);
    const collapsed = new Set();
    const terms = $('terms');
    const wholeWord = $('whole-word');
    const threshold = $('min-confidence');
    const thresholdValue = $('min-confidence-value');
    terms.value = options.terms.join(', ');
    wholeWord.checked = options.wholeWord;
    threshold.value = String(options.minConfidence);
    const percent = (value) => `${Math.round(Number(value) * 100)}%`;
    thresholdValue.textContent = percent(threshold.value);
    // Findings that the threshold dropped after the scan; lowering it keeps them again, but not
    // the findings that the user dropped by hand.
    const droppedByThreshold = new Set();
    if (options.accent) doc.documentElement.style.setProperty('--accent', options.accent);

    // Failures are on screen through the workflow's state; nothing more to do with them here.
    const quietly = (promise) => promise.catch(() => {});

    const scan = () => workflow.scan({
      terms: root.Sablemark.detectors.parseTerms(terms.value),
      wholeWord: wholeWord.checked,
      kinds: options.kinds,
      minConfidence: Number(threshold.value),
      regions: options.regions,
    }).then(() => droppedByThreshold.clear());
    $('scan-form').addEventListener('submit', (event) => {
      event.preventDefault();
      quietly(scan());
    });
    threshold.addEventListener('input', () => {
      thresholdValue.textContent = percent(threshold.value);
    });
    // Moving the threshold over a scan's findings drops the less certain ones from the review
    // and keeps again those it dropped itself; a new scan looks no lower than the threshold.
    threshold.addEventListener('change', () => {
      const session = workflow.current;
      if (!session || session.applied) return;
      const least = Number(threshold.value);
      const drop = session.findings.filter((f) => f.kept && f.confidence < least).map((f) => f.id);
      const keep = session.findings
        .filter((f) => droppedByThreshold.has(f.id) && f.confidence >= least)
        .map((f) => f.id);
      drop.forEach((id) => droppedByThreshold.add(id));
      keep.forEach((id) => droppedByThreshold.delete(id));
      if (drop.length) quietly(workflow.setKept(drop, false));
      if (keep.length) quietly(workflow.setKept(keep, true));
    });
    // Pages without text: the editor's recognition, then a scan that reads what it found.
    $('recognize').addEventListener('click', () => quietly(workflow.recognizeText().then((ran) => ran && scan())));
    $('apply').addEventListener('click', () => quietly(workflow.apply()));
    $('back-to-scan').addEventListener('click', () => workflow.showPage('scan'));
    $('account-refresh').addEventListener('click', () => workflow.loadAccount());
    $('save').addEventListener('click', () => quietly(workflow.save()));
    $('remark').addEventListener('click', () => quietly(workflow.remarkAndApply()));

    const findings = $('findings');
    findings.addEventListener('change', (event) => {
      const box = event.target;
      if (box.dataset.finding) quietly(workflow.setKept(box.dataset.finding, box.checked));
      else if (box.dataset.kind) quietly(workflow.setKindKept(box.dataset.kind, box.checked));
    });
    findings.addEventListener('click', (event) => {
      const button = event.target.closest('button[data-show]');
      if (button) quietly(workflow.show(button.dataset.show));
    });
    findings.addEventListener('toggle', (event) => {
      const kind = event.target.dataset.group;
      if (kind) event.target.open ? collapsed.delete(kind) : collapsed.add(kind);
    }, true);

    function renderGroup(session, kind, list) {
      const kept = list.filter((f) => f.kept && f.matches.length).length;
      const locatable = list.filter((f) => f.matches.length).length;
      const locked = workflow.busy || session.applied;
      const groupBox = el(doc, 'input', {
        type: 'checkbox',
        checked: locatable > 0 && kept === locatable,
        indeterminate: kept > 0 && kept < locatable,
        disabled: locked || locatable === 0,
        title: 'Keep or drop all of this kind',
        'data-kind': kind,
      });
      const items = list.map((f) => {
        const where = `p. ${f.page + 1}` + (f.matches.length > 1 ? ` ×${f.matches.length}` : '');
        const state = !f.matches.length ? ' missing' : f.kept ? '' : ' dropped';
        return el(doc, 'li', { className: 'finding' + state }, [
          el(doc, 'input', {
            type: 'checkbox',
            checked: f.kept && f.matches.length > 0,
            disabled: locked || !f.matches.length,
            title: f.matches.length ? 'Redact this finding' : 'Not found in the document; not marked',
            'data-finding': f.id,
          }),
          el(doc, 'button', {
            type: 'button',
            className: 'finding-text',
            text: f.text,
            disabled: workflow.busy || session.applied || !f.matches.length,
            title: 'Show in the document',
            'data-show': f.id,
          }),
          el(doc, 'span', {
            className: 'confidence',
            text: `${Math.round((f.confidence ?? 1) * 100)}%`,
            title: 'How certain the detector is',
          }),
          el(doc, 'span', { className: 'where', text: f.matches.length ? where : `${where} · not found` }),
        ]);
      });
      return el(doc, 'details', { open: !collapsed.has(kind), 'data-group': kind }, [
        el(doc, 'summary', {}, [
          groupBox,
          el(doc, 'span', { className: 'kind', text: KIND_LABELS[kind] || kind }),
          el(doc, 'span', { className: 'count', text: `${kept}/${list.length}` }),
        ]),
        el(doc, 'ul', {}, items),
      ]);
    }

    function renderSummary(summary) {
      const rows = KIND_ORDER.filter((k) => summary.findings[k]).map((k) =>
        el(doc, 'li', {}, [
          el(doc, 'span', { text: KIND_LABELS[k] }),
          el(doc, 'span', { className: 'count', text: String(summary.findings[k]) }),
        ]));
      return [
        el(doc, 'h2', { text: 'Done' }),
        el(doc, 'p', {
          text: `${summary.total} finding(s) redacted on ${summary.pagesWithFindings} of ${summary.pages} page(s).`,
        }),
        el(doc, 'ul', {}, rows),
        el(doc, 'p', { className: 'output', text: `Saved as ${summary.output}` }),
        ...(summary.verified
          ? [el(doc, 'p', {
            className: summary.verified.remaining.length ? 'verified error' : 'verified',
            text: verificationLine(summary.verified),
          })]
          : []),
      ];
    }

    function render() {
      const session = workflow.current;
      const account = workflow.account;
      const fullName = account ? `${account.firstname || ''} ${account.lastname || ''}`.trim() : '';
      $('account').textContent = account
        ? fullName || account.email || ''
        : workflow.accountError ? `Account: ${workflow.accountError}` : '';
      $('account').title = account && account.email ? account.email : '';

      const onAccount = workflow.page === 'account';
      $('account-view').hidden = !onAccount;
      $('scan-view').hidden = onAccount;
      $('account-who').textContent = account
        ? `Signed in as ${fullName || account.username || account.email || 'this user'}.`
        : workflow.accountError ? `Not signed in: ${workflow.accountError}` : 'Reading the account…';
      $('account-email').textContent = account && account.email ? account.email : '';
      $('account-state').textContent = account
        ? 'Sign-in, sign-out and the plan are managed in the editor\'s account settings.' : '';

      const active = session ? session.doc : workflow.activeDoc;
      $('doc-line').textContent = active
        ? (active.name || 'Unsaved document') + (session && session.pageCount ? ` · ${session.pageCount} page(s)` : '')
        : 'No document';

      $('scan').disabled = workflow.busy;
      $('scan').textContent = session && !session.applied ? 'Scan again' : 'Scan';
      $('apply').disabled = workflow.busy || !session || session.applied || workflow.keptCount() === 0;
      const unmarked = workflow.unmarkedFindings().length > 0;
      $('save').hidden = !session || !session.applied || session.saved;
      $('save').disabled = workflow.busy;
      $('save').textContent = unmarked ? 'Save without them' : 'Save copy';
      $('remark').hidden = !session || session.saved || !unmarked;
      $('remark').disabled = workflow.busy;
      $('recognize').hidden = !session || session.applied || !(session.textless || []).length;
      $('recognize').disabled = workflow.busy;
      doc.body.classList.toggle('busy', workflow.busy);

      $('status').textContent = workflow.busy ? `${workflow.activity}…` : workflow.status;
      $('error').hidden = !workflow.error;
      $('error').textContent = workflow.error || '';

      const notices = $('notices');
      notices.replaceChildren(...(session ? session.notices : []).map((n) => el(doc, 'li', { text: n })));

      const groups = [];
      if (session) {
        for (const kind of KIND_ORDER) {
          const list = session.findings.filter((f) => f.kind === kind);
          if (list.length) groups.push(renderGroup(session, kind, list));
        }
      }
      const own = session && workflow.userMarks ? workflow.userMarks.render(doc, session) : null;
      findings.replaceChildren(...groups, ...(own ? [own] : []));

      const summary = $('summary');
      summary.hidden = !(session && session.summary);
      summary.replaceChildren(...(session && session.summary ? renderSummary(session.summary) : []));
    }

    return { render };
  }

  (root.Sablemark = root.Sablemark || {}).view = { createView, KIND_LABELS };
})(globalThis);
