// The task pane's view: draws the workflow's state into the page and turns clicks into
// workflow operations. Document text is only ever put in as text, never as markup.
(function (root) {
  'use strict';

  const { KIND_ORDER, verificationLine } = root.Sablemark.workflow;
  const { usageLine } = root.Sablemark.accountUsage;

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
    $('cancel-scan').addEventListener('click', () => workflow.cancelScan());
    $('back-to-scan').addEventListener('click', () => workflow.showPage('scan'));
    $('account-refresh').addEventListener('click', () => workflow.loadAccount());
    $('account-sign-in').addEventListener('click', () => quietly(workflow.signIn()));
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

    // A group lists its first findings only until the user asks for all of them: a list of
    // thousands of rows costs seconds to lay out in the pane.
    const FIRST_ROWS = 200;
    const showAll = new Set();
    findings.addEventListener('click', (event) => {
      const more = event.target.closest('button[data-more]');
      if (!more) return;
      showAll.add(more.dataset.more);
      renderFindings(workflow.current);
    });

    function renderItem(f) {
      const where = `p. ${f.page + 1}` + (f.matches.length > 1 ? ` ×${f.matches.length}` : '');
      const state = !f.matches.length ? ' missing' : f.kept ? '' : ' dropped';
      return el(doc, 'li', { className: 'finding' + state }, [
        el(doc, 'input', {
          type: 'checkbox',
          checked: f.kept && f.matches.length > 0,
          disabled: !f.matches.length,
          title: f.matches.length ? 'Redact this finding' : 'Not found in the document; not marked',
          'data-finding': f.id,
        }),
        el(doc, 'button', {
          type: 'button',
          className: 'finding-text',
          text: f.text,
          disabled: !f.matches.length,
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
    }

    function renderGroup(kind, list) {
      const kept = list.filter((f) => f.kept && f.matches.length).length;
      const locatable = list.filter((f) => f.matches.length).length;
      const groupBox = el(doc, 'input', {
        type: 'checkbox',
        checked: locatable > 0 && kept === locatable,
        indeterminate: kept > 0 && kept < locatable,
        disabled: locatable === 0,
        title: 'Keep or drop all of this kind',
        'data-kind': kind,
      });
      const shown = showAll.has(kind) ? list : list.slice(0, FIRST_ROWS);
      const rest = list.length - shown.length;
      return el(doc, 'details', { open: !collapsed.has(kind), 'data-group': kind }, [
        el(doc, 'summary', {}, [
          groupBox,
          el(doc, 'span', { className: 'kind', text: KIND_LABELS[kind] || kind }),
          el(doc, 'span', { className: 'count', text: `${kept}/${list.length}` }),
        ]),
        el(doc, 'ul', {}, shown.map(renderItem)),
        rest > 0
          ? el(doc, 'button', { type: 'button', className: 'more', text: `Show ${rest} more`, 'data-more': kind })
          : null,
      ]);
    }

    // The list is built again when an operation has ended, not on each step of a running one:
    // a scan reports its progress hundreds of times, and rebuilding a long list each time made
    // the scan's cost grow with the square of the document. While work runs the list stays as
    // it was, out of reach of the pointer and keyboard.
    let listed = null;
    function renderFindings(session) {
      const locked = workflow.busy || Boolean(session && session.applied);
      findings.inert = locked;
      findings.classList.toggle('locked', locked);
      if (workflow.busy && listed === session) return;
      listed = session;
      const groups = [];
      if (session) {
        const byKind = new Map();
        for (const f of session.findings) {
          if (!byKind.has(f.kind)) byKind.set(f.kind, []);
          byKind.get(f.kind).push(f);
        }
        for (const kind of KIND_ORDER) if (byKind.has(kind)) groups.push(renderGroup(kind, byKind.get(kind)));
      }
      const own = session && workflow.userMarks ? workflow.userMarks.render(doc, session) : null;
      findings.replaceChildren(...groups, ...(own ? [own] : []));
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
          text: !summary.total && summary.userMarks
            ? 'The marks you drew in the editor were redacted.'
            : `${summary.total} finding(s) redacted on ${summary.pagesWithFindings} of ${summary.pages} page(s).` +
              (summary.userMarks ? ' The marks you drew in the editor were redacted too.' : ''),
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
      const usage = workflow.usage;
      $('account-service').textContent = usage && usage.address ? `Service: ${usage.address}` : '';
      $('account-usage').hidden = !account || !usage;
      if (account && usage) $('account-usage').textContent = usageLine(usage.usage, usage.error);
      $('account-state').textContent = account
        ? 'To sign out or change the account, use the editor\'s Account menu.'
        : 'Sign in to use the redaction service.';
      $('account-sign-in').hidden = Boolean(account);
      $('account-sign-in').disabled = workflow.busy;

      const active = session ? session.doc : workflow.activeDoc;
      $('doc-line').textContent = active
        ? (active.name || 'Unsaved document') + (session && session.pageCount ? ` · ${session.pageCount} page(s)` : '')
        : 'No document';

      $('scan').disabled = workflow.busy;
      $('scan').textContent = session && !session.applied && session.scanned ? 'Scan again' : 'Scan';
      $('apply').disabled = workflow.busy || !workflow.canApply();
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
      const moving = workflow.progress !== null && workflow.busy;
      $('scan-progress').hidden = !moving;
      if (moving) {
        const percent = Math.round(workflow.progress * 100);
        $('scan-progress-bar').value = percent;
        $('scan-progress-percent').textContent = `${percent}%`;
      }
      $('cancel-scan').hidden = !workflow.cancellable;
      $('cancel-scan').disabled = workflow.activity.startsWith('Cancelling');
      $('error').hidden = !workflow.error;
      $('error').textContent = workflow.error || '';

      const notices = $('notices');
      notices.replaceChildren(...(session ? session.notices : []).map((n) => el(doc, 'li', { text: n })));

      renderFindings(session);

      const summary = $('summary');
      summary.hidden = !(session && session.summary);
      summary.replaceChildren(...(session && session.summary ? renderSummary(session.summary) : []));
    }

    return { render };
  }

  (root.Sablemark = root.Sablemark || {}).view = { createView, KIND_LABELS };
})(globalThis);
