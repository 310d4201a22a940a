'use strict';
const test = require('node:test');
const assert = require('node:assert/strict');
const { Bridge, parseEvent } = require('../js/bridge.js');
const { Workflow } = require('../js/workflow.js');
const { UserMarks } = require('../js/user_marks.js');
const { FakePlugin } = require('./fake_plugin.js');

const DOCS = [
  { id: '{DOC-1}', filePath: '/data/report.pdf', pages: ['E-mail: ana@example.com', 'Notes only'] },
  { id: '{DOC-2}', filePath: '/data/other.pdf', pages: ['nothing'] },
];

// The page's workflow with its user marks wired in as the page does it.
function wired(plugin, nameBase, options = {}) {
  const workflow = new Workflow({ bridge: new Bridge(plugin.transport), nameBase });
  workflow.userMarks = new UserMarks({ workflow, ...options });
  workflow.onChange(() => workflow.userMarks.follow());
  plugin.onEvent = (event) => {
    workflow.handleEvent(parseEvent(event));
    workflow.userMarks.handleEvent(parseEvent(event));
  };
  return workflow;
}

// A scanned document.
async function scanned(docs = DOCS) {
  const plugin = new FakePlugin({ docs });
  const workflow = wired(plugin, 't');
  await workflow.scan();
  await settled();
  plugin.calls.length = 0;
  return { plugin, workflow, marks: workflow.userMarks };
}

// The user draws a mark of their own in the editor.
async function userDraws(plugin) {
  plugin.otherRedact = true;
  plugin.emit('ev-doc-modified', { id: '{DOC-1}' });
  await settled();
}

const settled = () => new Promise((resolve) => setImmediate(resolve)).then(() => new Promise((r) => setImmediate(r)));

test('the page asks about the user\'s own marks after a scan and when its document changes', async () => {
  const { plugin, workflow, marks } = await scanned();
  assert.equal(marks.stateOf('{DOC-1}').present, false, 'asked once the scan was over');

  await userDraws(plugin);
  assert.deepEqual(plugin.commands(), ['hasOtherRedact']);
  assert.equal(marks.stateOf('{DOC-1}').present, true);
  assert.equal(marks.included(workflow.current), true);

  // Another document's change, or one while the page's own command runs, asks nothing.
  const cases = [
    () => plugin.emit('ev-doc-modified', { id: '{DOC-2}' }),
    () => { workflow.bridge.call('getUser'); plugin.emit('ev-doc-modified', { id: '{DOC-1}' }); },
  ];
  for (const raise of cases) {
    plugin.calls.length = 0;
    raise();
    await settled();
    assert.ok(!plugin.commands().includes('hasOtherRedact'), plugin.commands().join());
  }
});

test('Apply takes the user\'s marks with the kept findings while they are ticked', async () => {
  const { plugin, workflow, marks } = await scanned();
  await userDraws(plugin);
  const kept = workflow.current.findings.flatMap((f) => f.matches.map((m) => m.name)).filter(Boolean);
  assert.ok(kept.length > 0);

  plugin.calls.length = 0;
  await workflow.apply();
  assert.deepEqual(plugin.paramsOf('redactApply'), [''], 'every mark of the document');
  assert.equal(plugin.otherRedact, false);
  assert.deepEqual(plugin.applied.sort(), kept.sort());
  assert.ok(workflow.current.findings.every((f) => f.matches.every((m) => m.applied)));
  assert.equal(workflow.current.saved, true);
  assert.ok(!workflow.current.notices.some((n) => /left as they are/.test(n)));
  assert.equal(marks.stateOf('{DOC-1}').present, false);
});

test('unticked, the user\'s marks stay out of the apply and the pane says so', async () => {
  const { plugin, workflow, marks } = await scanned();
  await userDraws(plugin);
  marks.setIncluded('{DOC-1}', false);

  await workflow.apply();
  const [params] = plugin.paramsOf('redactApply');
  assert.ok(Array.isArray(params.uniqueIDNames) && params.uniqueIDNames.length > 0);
  assert.equal(plugin.otherRedact, true, 'the user\'s marks stand');
  assert.ok(workflow.current.notices.some((n) => /left as they are/.test(n)));
});

test('a Cancel at the editor\'s prompt keeps the session and the user\'s marks', async () => {
  const { plugin, workflow, marks } = await scanned();
  await userDraws(plugin);
  plugin.promptAnswer = 2;
  await workflow.apply();
  assert.ok(workflow.current.cancelled);
  assert.equal(workflow.current.applied, false);
  assert.equal(marks.stateOf('{DOC-1}').present, true);
  assert.equal(plugin.otherRedact, true);
});

// A document in which the scan finds nothing; the user then draws a mark in the editor.
async function markedByTheUserOnly() {
  const { plugin, workflow } = await scanned([{ id: '{DOC-1}', filePath: '/data/notes.pdf', pages: ['Notes only', 'More notes'] }]);
  assert.equal(workflow.keptCount(), 0);
  assert.equal(workflow.canApply(), false, 'nothing to apply before the user marks anything');
  await userDraws(plugin);
  plugin.calls.length = 0;
  return { plugin, workflow };
}

test('the user\'s own marks alone are applied and saved, and the summary says so', async () => {
  const { plugin, workflow } = await markedByTheUserOnly();
  assert.equal(workflow.canApply(), true);
  const session = await workflow.apply();
  assert.deepEqual(plugin.paramsOf('redactApply'), [''], 'the apply-all form');
  assert.equal(plugin.otherRedact, false);
  assert.ok(session.applied && session.saved);
  assert.equal(session.summary.total, 0);
  assert.equal(session.summary.userMarks, true);
  assert.equal(workflow.canApply(), false);
});

test('without the user\'s marks Apply has nothing to do and applies nothing', async () => {
  const cases = [
    ['unticked', ({ workflow }) => workflow.userMarks.setIncluded('{DOC-1}', false), /No finding is marked/],
    ['undone in the editor', ({ plugin }) => { plugin.otherRedact = false; }, /no longer in the document/],
  ];
  for (const [name, change, message] of cases) {
    const context = await markedByTheUserOnly();
    change(context);
    await assert.rejects(context.workflow.apply(), message, name);
    assert.deepEqual(context.plugin.paramsOf('redactApply'), [], name);
    assert.equal(context.workflow.current.applied, false, name);
    assert.equal(context.workflow.canApply(), false, name);
  }
});

test('before any scan, marks the user draws are listed alone and Apply & save takes them', async () => {
  const plugin = new FakePlugin({ docs: DOCS });
  const workflow = wired(plugin, 't', { beforeScan: true });
  await workflow.refreshDocument();
  await settled();
  assert.equal(workflow.current, null, 'no mark of the user\'s: nothing to review yet');
  assert.deepEqual(plugin.commands(), ['getCurrentDoc', 'hasOtherRedact']);

  plugin.otherRedact = true; // the user draws an area with the editor's Redact tool
  plugin.emit('ev-doc-modified', { id: '{DOC-1}' });
  for (let wait = 0; wait < 50 && !workflow.current; wait++) await settled();
  assert.equal(workflow.current.scanned, false);
  assert.equal(workflow.userMarks.listed(workflow.current), true);
  assert.equal(workflow.canApply(), true);
  const session = await workflow.apply();
  assert.deepEqual(plugin.paramsOf('redactApply'), ['']);
  assert.ok(session.applied && session.saved && session.summary.userMarks);

  // A scan afterwards of a document with marks of the user's starts from that review.
  const other = new Workflow({ bridge: new Bridge(plugin.transport), nameBase: 'u' });
  other.userMarks = new UserMarks({ workflow: other }); // an unattended run does not look first
  other.onChange(() => other.userMarks.follow());
  plugin.calls.length = 0;
  await other.refreshDocument();
  await settled();
  assert.deepEqual(plugin.commands(), ['getCurrentDoc']);
});
