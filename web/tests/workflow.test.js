'use strict';
const test = require('node:test');
const assert = require('node:assert/strict');
const { offeredName, verificationLine } = require('../js/workflow.js');
const { FakePlugin, workflowOn } = require('./fake_plugin.js');

const PAGES = [
  'Project: Nightjar\r\nE-mail: ana@example.com\r\nCard: 4539 1488 0343 6467',
  'Notes only',
  'Nightjar again: ana@example.com, phone +44 20 7946 0958',
];

function setUp({ pages = PAGES, docs } = {}) {
  const plugin = new FakePlugin({
    docs: docs || [{ id: '{DOC-1}', filePath: '/data/report.pdf', pages }],
  });
  return { plugin, workflow: workflowOn(plugin) };
}

const finding = (workflow, kind, page) =>
  workflow.current.findings.find((f) => f.kind === kind && f.page === page);

test('a scan reads the text, locates each page\'s findings there and marks every match', async () => {
  const { plugin, workflow } = setUp();
  await workflow.scan({ terms: ['nightjar'] });

  assert.deepEqual(plugin.commands(), ['getCurrentDoc', 'isCurrentDocModified', 'getFilePageCount',
    'getFileTexts', 'findTextList', 'findTextList', ...Array(6).fill('addAnnot')]);
  assert.deepEqual(plugin.paramsOf('getFileTexts'), [{ pageIndex: -1 }]);
  assert.deepEqual(plugin.paramsOf('findTextList'), [
    { file: { id: '{DOC-1}' }, startPage: 0, endPage: 0,
      textList: [['nightjar', 0], ['ana@example.com', 3], ['4539 1488 0343 6467', 3]] },
    { file: { id: '{DOC-1}' }, startPage: 2, endPage: 2,
      textList: [['nightjar', 0], ['ana@example.com', 3], ['+44 20 7946 0958', 3]] },
  ]);

  const annots = plugin.paramsOf('addAnnot');
  assert.ok(annots.every((a) => a.type === 'redact' && a.uniqueIDName.startsWith('ai_plugin_')));
  assert.equal(new Set(annots.map((a) => a.uniqueIDName)).size, annots.length);
  const searched = [...plugin.searches].flatMap(([key, list]) => list.map((_, i) => `${key}#${i}`));
  assert.deepEqual(annots.map((a) => `${a.searchKey}#${a.index}`).sort(), searched.sort());
  assert.equal(workflow.keptCount(), 6);
  assert.equal(workflow.current.stale, false, 'its own marks do not make the scan stale');
});

test('dropped findings are unmarked and left out of the redaction; the copy is saved', async () => {
  const { plugin, workflow } = setUp();
  await workflow.scan();
  const card = finding(workflow, 'card', 0);
  const cardName = card.matches[0].name;

  await workflow.setKept(card.id, false);
  assert.deepEqual(plugin.paramsOf('removeAnnots'),
    [{ searchKey: card.searchKey, index: 0, type: 'redact', uniqueIDPrefix: 'ai_plugin_' }]);
  await workflow.setKindKept('phone', false);
  await workflow.setKept(card.id, true); // kept again: marked under a new name
  assert.notEqual(card.matches[0].name, cardName);
  await workflow.setKept(card.id, false);

  plugin.calls.length = 0;
  const session = await workflow.apply();
  assert.deepEqual(plugin.commands(), ['hasOtherRedact', 'redactApply', 'saveDocument', 'getCurrentDoc',
    'getFileTexts', 'findTextList', 'findTextList']);
  const [{ uniqueIDNames }] = plugin.paramsOf('redactApply');
  assert.deepEqual(uniqueIDNames.sort(), [finding(workflow, 'email', 0), finding(workflow, 'email', 2)]
    .map((f) => f.matches[0].name).sort());
  assert.deepEqual(plugin.paramsOf('saveDocument'), [{ isSaveAs: true, suffix: '_redacted' }]);
  assert.deepEqual(session.summary, {
    file: '/data/report.pdf', output: '/data/report_redacted.pdf', pages: 3,
    findings: { email: 2, iban: 0, card: 0, ssn: 0, nino: 0, nationalId: 0, passport: 0, dob: 0,
      recordNumber: 0, phone: 0, address: 0, name: 0, term: 0 },
    total: 2, pagesWithFindings: 2, pagesWithoutText: [], verified: { checked: 2, remaining: [] },
  });
});

test('a bridge error stops the run and is shown to the user', async () => {
  const { plugin, workflow } = setUp();
  plugin.failures.set('getFileTexts', 300011);
  await assert.rejects(workflow.scan(), { ret: 300011 });
  assert.equal(workflow.error, 'Reading the text of the pages failed: the document could not be read as a PDF (code 300011).');
  assert.ok(!plugin.commands().includes('findTextList'));
  assert.equal(workflow.busy, false);

  plugin.failures.clear();
  plugin.failures.set('addAnnot', 400015);
  plugin.doc.pages[1] = 'Nightjar '.repeat(80);
  await assert.rejects(workflow.scan({ terms: ['nightjar'] }), { ret: 400015 });
  assert.equal(plugin.paramsOf('addAnnot').length, 50, 'no run of marks after the one that failed');
  assert.match(workflow.error, /could not add the mark \(code 400015\)/);
});

test('a scan whose document goes to the background waits for it, and stops if it closes', async () => {
  const docs = [{ id: '{DOC-1}', filePath: '/data/report.pdf', pages: PAGES },
    { id: '{DOC-2}', filePath: '/data/other.pdf', pages: ['nothing'] }];
  const { plugin, workflow } = setUp({ docs });
  plugin.activate(0);
  const onTheScanned = [];
  for (const command of ['findTextList', 'addAnnot']) {
    const real = plugin[`_${command}`].bind(plugin);
    plugin[`_${command}`] = (params) => {
      onTheScanned.push(plugin.currentIndex === 0);
      return real(params);
    };
  }
  const readTexts = plugin._getFileTexts.bind(plugin);
  plugin._getFileTexts = (params) => {
    const texts = readTexts(params);
    plugin.activate(1); // the user switches tabs while the text is read
    return texts;
  };
  const scanned = workflow.scan();
  for (let wait = 0; wait < 200 && !workflow.activity.startsWith('Paused'); wait++) {
    await new Promise((resolve) => setTimeout(resolve, 10));
  }
  assert.match(workflow.activity, /^Paused until report\.pdf/);
  assert.ok(!plugin.commands().includes('findTextList'));
  // Meanwhile the pane names the document the user is looking at, without waiting for the scan.
  const named = workflow.refreshDocument().then(() => workflow.activeDoc && workflow.activeDoc.name);
  const late = new Promise((resolve) => setTimeout(() => resolve('(not before the scan ends)'), 2000));
  assert.equal(await Promise.race([named, late]), 'other.pdf');
  plugin._getFileTexts = readTexts;
  plugin.activate(0);
  const session = await scanned;
  assert.equal(session.doc.id, '{DOC-1}');
  assert.equal(workflow.keptCount(), 4);
  assert.ok(onTheScanned.length && onTheScanned.every(Boolean), 'nothing reached the other document');

  plugin._getFileTexts = (params) => {
    const texts = readTexts(params);
    plugin.activate(1);
    plugin.emit('ev-doc-closed', { id: '{DOC-1}' });
    return texts;
  };
  await assert.rejects(workflow.scan(), /closed before its scan ended/);
});

test('marks that reach another tab while they are sent are made again on their own document', async () => {
  const docs = [{ id: '{DOC-1}', filePath: '/data/report.pdf', pages: PAGES },
    { id: '{DOC-2}', filePath: '/data/other.pdf', pages: ['Nightjar'] }];
  const { plugin, workflow } = setUp({ docs });
  const addAnnot = plugin._addAnnot.bind(plugin);
  let served = 0;
  plugin._addAnnot = (params) => {
    if (++served === 2) {
      plugin.activate(1); // the user switches tabs while the marks are on their way
      setTimeout(() => plugin.activate(0), 20);
    }
    return addAnnot(params);
  };
  const session = await workflow.scan({ terms: ['nightjar'] });
  assert.equal(workflow.error, null);
  assert.equal(workflow.keptCount(), 6);
  assert.ok(session.findings.every((f) => f.matches.every((m) => plugin.annots.get(m.name).doc === '{DOC-1}')));
  assert.equal(plugin.annots.size, 6, 'nothing was marked on the other document');
});

test('the editor turns the pane to the account page and back', async () => {
  const { plugin, workflow } = setUp();
  plugin.emit('ev-user-change-page', { page: 'my-plan' });
  assert.equal(workflow.page, 'account');
  await workflow.loadAccount();
  assert.equal(workflow.account.email, 'ana@example.com');
  plugin.emit('ev-user-change-page', { page: 'home' });
  assert.equal(workflow.page, 'scan');

  // Signed out in the editor, then signed in again from the account page.
  plugin.signedIn = false;
  plugin.emit('ev-user-sign-out');
  assert.equal(workflow.account, null);
  await workflow.loadAccount();
  assert.equal(workflow.account, null);
  await workflow.signIn(); // the user cancels the sign-in window
  assert.equal(workflow.error, null);
  assert.equal(workflow.account, null);
  plugin.signInAnswer = true;
  await workflow.signIn();
  assert.equal(workflow.account.email, 'ana@example.com');
});

test('a new scan keeps the marks of the same matches and what the user dropped stays dropped', async () => {
  const { plugin, workflow } = setUp();
  await workflow.scan();
  await workflow.setKindKept('card', false);
  const names = workflow.current.findings.flatMap((f) => f.matches.map((m) => m.name));
  plugin.calls.length = 0;
  await workflow.scan();
  assert.ok(!plugin.commands().some((c) => c === 'addAnnot' || c === 'removeAnnots'),
    'the unchanged text keeps its marks: a second scan costs no more than the first');
  assert.deepEqual(workflow.current.findings.flatMap((f) => f.matches.map((m) => m.name)), names);
  const card = finding(workflow, 'card', 0);
  assert.equal(card.kept, false);
  assert.ok(card.matches.length, 'found and located, only not marked');
  await workflow.setKept(card.id, true);
  assert.equal(workflow.keptCount(), 4);
  assert.equal(plugin.annots.size, 4);

  // Text moved on page 1 (no event said so): its marks are made again, page 3 keeps its own.
  plugin.doc.pages[0] = `Draft\r\n${plugin.doc.pages[0]}`;
  plugin.calls.length = 0;
  await workflow.scan();
  assert.equal(plugin.paramsOf('removeAnnots').length, 2);
  assert.equal(plugin.paramsOf('addAnnot').length, 2);
  assert.equal(plugin.annots.size, 4);
});

test('cancelling at the prompt changes nothing; cancelling the save leaves a retry', async () => {
  const { plugin, workflow } = setUp();
  await workflow.scan();
  plugin.promptAnswer = 2;
  await workflow.apply();
  assert.equal(workflow.error, null, 'a No at the prompt is no failure');
  assert.match(workflow.status, /^Cancelled/);
  assert.equal(workflow.current.applied, false);
  assert.equal(workflow.keptCount(), 4, 'the marks stay for review');
  assert.ok(!plugin.commands().includes('saveDocument'));

  plugin.promptAnswer = 1;
  plugin.savePath = () => null;
  await assert.rejects(workflow.apply(), { ret: 400025 });
  assert.equal(workflow.current.applied, true);
  assert.equal(workflow.current.saved, false);

  plugin.savePath = () => '/elsewhere/chosen.pdf';
  const session = await workflow.save();
  assert.equal(session.summary.output, '/elsewhere/chosen.pdf');
  assert.equal(session.summary.total, 4);
});

test('texts the editor cannot find are reported, not marked', async () => {
  const { plugin, workflow } = setUp();
  const realSearch = plugin._findTextList.bind(plugin);
  plugin._findTextList = (params) => (params.startPage === 2 ? [400005] : realSearch(params));
  await workflow.scan();
  assert.equal(finding(workflow, 'phone', 2).matches.length, 0);
  assert.equal(workflow.keptCount(), 2);
  assert.equal(workflow.error, null);
  assert.match(workflow.current.notices.join(), /2 finding\(s\) could not be located/);
});

test('after a change of the text a new scan replaces the marks; show walks through the matches', async () => {
  const { plugin, workflow } = setUp({ pages: ['x@example.com and x@example.com'] });
  await workflow.scan({ terms: ['and'] });
  const email = finding(workflow, 'email', 0);
  await workflow.show(email.id);
  await workflow.show(email.id);
  await workflow.show(email.id);
  assert.deepEqual(plugin.paramsOf('markTexts').map((p) => p.index), [0, 1, 0]);

  workflow.handleEvent({ name: 'ev-doc-modified', data: { id: '{DOC-1}' } });
  plugin.calls.length = 0;
  await workflow.scan({ terms: ['and'] });
  assert.deepEqual(plugin.commands().slice(0, 5),
    ['getCurrentDoc', 'clearMarkTexts', 'removeAnnots', 'removeAnnots', 'removeAnnots']);
  assert.equal(plugin.annots.size, 3);

  // Unchanged text, another term list: the term's marks go, the e-mail's stay.
  plugin.calls.length = 0;
  await workflow.scan();
  assert.deepEqual(plugin.commands().filter((c) => /Annot/.test(c)), ['removeAnnots']);
  assert.equal(plugin.annots.size, 2);
});

test('a mark the user already deleted is noted, and the finding is dropped', async () => {
  const { plugin, workflow } = setUp();
  await workflow.scan();
  const card = finding(workflow, 'card', 0);
  plugin.annots.delete(card.matches[0].name);
  await workflow.setKept(card.id, false);
  assert.equal(workflow.error, null);
  assert.equal(card.kept, false);
  assert.match(workflow.current.notices.join(), /no longer there \(code 400007\)/);
});

test('events: other document, back again, outside changes, closing', async () => {
  const { plugin, workflow } = setUp({ docs: [
    { id: '{A}', filePath: '/a.pdf', pages: ['a@example.com'] },
    { id: '{B}', filePath: '/b.pdf', pages: ['b@example.com'] },
  ] });
  await workflow.scan();
  const sessionA = workflow.current;

  plugin.activate(1);
  assert.equal(workflow.current, null);
  assert.match(workflow.status, /Another document/);
  plugin.emit('ev-doc-modified', { id: '{A}' }); // changed while not ours to change
  plugin.activate(0);
  assert.equal(workflow.current, sessionA);
  assert.equal(sessionA.stale, true);
  assert.match(sessionA.notices.join(), /changed after the scan/);

  plugin.emit('ev-doc-closed', { id: '{A}' });
  assert.equal(workflow.current, null);
  assert.equal(workflow.sessions.size, 0);
  plugin.emit('ev-doc-activate', { id: '0' });
  assert.match(workflow.status, /No PDF document/);
});

test('the copy is offered under the stem, the suffix and the extension', () => {
  assert.equal(offeredName('report.pdf'), 'report_redacted.pdf');
  assert.equal(offeredName('v1.2.report.PDF'), 'v1.2.report_redacted.PDF');
  assert.equal(offeredName('notes'), 'notes_redacted');
});

test('the saved copy is searched again: what remains is listed, nothing remaining says so', async () => {
  for (const leak of [false, true]) {
    const { plugin, workflow } = setUp();
    await workflow.scan({ terms: ['nightjar'] });
    plugin.leakOnApply = leak;
    plugin.calls.length = 0;
    const session = await workflow.apply();
    const checks = plugin.calls.slice(plugin.commands().lastIndexOf('getCurrentDoc') + 1);
    assert.deepEqual(checks.map((c) => c.command), ['getFileTexts', 'findTextList', 'findTextList']);
    assert.deepEqual(checks[1].params, { file: { id: '{DOC-1}' }, startPage: 0, endPage: 0,
      textList: [['nightjar', 0], ['ana@example.com', 3], ['4539 1488 0343 6467', 3]] });
    const { verified } = session.summary;
    assert.equal(verified.checked, 6);
    if (!leak) {
      assert.deepEqual(verified.remaining, []);
      assert.equal(verificationLine(verified), 'Verified: 0 of 6 findings remain');
      assert.equal(workflow.status, 'Redaction applied, the copy saved and checked.');
    } else {
      assert.equal(verified.remaining.length, 6);
      assert.deepEqual(verified.remaining[0], { kind: 'term', text: 'Nightjar', page: 0 });
      assert.match(verificationLine(verified), /^Verified: 6 of 6 findings remain: "Nightjar" \(page 1\), /);
      assert.equal(workflow.status, 'The copy is saved, but redacted findings remain in it.');
    }
  }
});

test('a saved copy that cannot be read again counts every finding as remaining', async () => {
  const { plugin, workflow } = setUp();
  await workflow.scan();
  plugin.failures.set('findTextList', 300011);
  const session = await workflow.apply();
  assert.equal(session.summary.verified.remaining.length, session.summary.verified.checked);
});

test('marks undone in the editor before the apply are named, and marked again on request', async () => {
  const { plugin, workflow } = setUp();
  await workflow.scan({ terms: ['nightjar'] });
  const term = finding(workflow, 'term', 2);
  plugin.annots.delete(term.matches[0].name); // the user pressed undo in the editor

  const session = await workflow.apply();
  assert.equal(session.saved, false, 'nothing is saved while a ticked finding is not redacted');
  assert.deepEqual(workflow.unmarkedFindings(), [term]);
  assert.match(session.notices.at(-1), /1 ticked finding\(s\) are no longer marked .*"nightjar" \(page 3\)/i);
  assert.match(plugin.doc.pages[2], /Nightjar/, 'its text is still in the document');

  plugin.calls.length = 0;
  await workflow.remarkAndApply();
  assert.deepEqual(plugin.commands().slice(0, 3), ['addAnnot', 'redactApply', 'saveDocument']);
  assert.doesNotMatch(plugin.doc.pages[2], /Nightjar/i);
  assert.deepEqual(session.summary.verified, { checked: 6, remaining: [] });
  assert.deepEqual(workflow.unmarkedFindings(), []);
});

test('saving without the unmarked findings says what stays', async () => {
  const { plugin, workflow } = setUp();
  await workflow.scan({ terms: ['nightjar'] });
  const term = finding(workflow, 'term', 0);
  plugin.annots.delete(term.matches[0].name);
  await workflow.apply();
  const session = await workflow.save();
  assert.equal(session.saved, true);
  assert.equal(session.summary.verified.checked, 5, 'the unmarked finding was not redacted');
  assert.ok(session.notices.some((n) => n.includes('"Nightjar" (page 1)')));
});

test('a long unattended scan moves the progress window; the pane\'s own progress moves in every scan', async () => {
  const pages = Array.from({ length: 250 }, (_, i) => `Page ${i} of the minutes by Nightjar`);
  const { plugin, workflow } = setUp({ pages });
  const seen = [];
  workflow.onChange((w) => seen.push([w.activity, w.progress]));
  await workflow.scan({ terms: ['nightjar'], progressWindow: true });

  const commands = plugin.commands();
  assert.equal(commands.indexOf('createProgressBar'), commands.indexOf('getFilePageCount') + 1);
  assert.equal(commands[commands.length - 1], 'destroyProgressBar');
  const positions = plugin.progress.map((p) => p.position);
  assert.deepEqual(positions, [...positions].sort((a, b) => a - b));
  assert.ok(positions.length >= 3 && positions.every((p) => p >= 0 && p <= 100));
  const fractions = seen.map(([, p]) => p).filter((p) => p !== null);
  assert.deepEqual(fractions, [...fractions].sort((a, b) => a - b));
  assert.ok(seen.some(([a]) => a === 'Locating on page 201 of 250'));
  assert.ok(seen.some(([a]) => a === 'Marking 1 of 250'));
  assert.equal(workflow.progress, null);
  assert.ok(workflow.current.findings.every((f) => f.matches.length && f.matches.every((m) => m.name)));

  plugin.calls.length = 0;
  workflow.handleEvent({ name: 'ev-doc-modified', data: { id: '{DOC-1}' } });
  await workflow.scan({ terms: ['nightjar'] });
  assert.ok(!plugin.commands().some((c) => /ProgressBar$/.test(c)), 'the pane shows its own progress');
});

test('cancel stops the scan before its next command and takes its marks away, without a failure', async () => {
  // [command during which Cancel is pressed, whether the document changed since the first scan]
  for (const [after, changed] of [['findTextList', true], ['addAnnot', true], ['findTextList', false]]) {
    const { plugin, workflow } = setUp();
    await workflow.scan();
    const serve = plugin[`_${after}`].bind(plugin);
    plugin[`_${after}`] = (params) => {
      // The user presses Cancel while the editor works (unchanged: on the last page searched,
      // after which the earlier marks are the new scan's).
      if (changed || params.startPage === 2) workflow.cancelScan();
      return serve(params);
    };
    if (changed) workflow.handleEvent({ name: 'ev-doc-modified', data: { id: '{DOC-1}' } });
    plugin.calls.length = 0;
    assert.equal(await workflow.scan(), null, after);
    assert.ok(plugin.commands().includes(after));
    if (!changed) assert.equal(plugin.paramsOf('removeAnnots').length, 4, 'each earlier mark is removed once');
    assert.equal(workflow.error, null);
    assert.match(workflow.status, /^Cancelled/);
    assert.equal(workflow.current, null);
    assert.equal(plugin.annots.size, 0, `no mark of ours is left (cancelled after ${after})`);
    assert.equal(workflow.cancellable, false);
  }
});
