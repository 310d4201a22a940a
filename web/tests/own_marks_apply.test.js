'use strict';
const test = require('node:test');
const assert = require('node:assert/strict');
const { Bridge, parseEvent } = require('../js/bridge.js');
const { Workflow } = require('../js/workflow.js');
const { UserMarks } = require('../js/user_marks.js');
const { FakePlugin } = require('./fake_plugin.js');

const settled = () => new Promise((resolve) => setImmediate(resolve)).then(() => new Promise((r) => setImmediate(r)));

// A document in which the scan finds nothing; the user then draws a mark in the editor.
async function markedByTheUserOnly() {
  const plugin = new FakePlugin({ docs: [{ id: '{DOC-1}', filePath: '/data/notes.pdf', pages: ['Notes only', 'More notes'] }] });
  const workflow = new Workflow({ bridge: new Bridge(plugin.transport), nameBase: 't' });
  workflow.userMarks = new UserMarks({ workflow });
  workflow.onChange(() => workflow.userMarks.follow());
  plugin.onEvent = (event) => {
    workflow.handleEvent(parseEvent(event));
    workflow.userMarks.handleEvent(parseEvent(event));
  };
  await workflow.scan();
  await settled();
  assert.equal(workflow.keptCount(), 0);
  assert.equal(workflow.canApply(), false, 'nothing to apply before the user marks anything');
  plugin.otherRedact = true;
  plugin.emit('ev-doc-modified', { id: '{DOC-1}' });
  await settled();
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
