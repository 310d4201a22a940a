'use strict';
const test = require('node:test');
const assert = require('node:assert/strict');
const { Bridge } = require('../js/bridge.js');
const { Workflow } = require('../js/workflow.js');
const { BatchRunner, END } = require('../js/batch_run.js');
const { parsePageOptions } = require('../js/page_options.js');
const { FakePlugin } = require('./fake_plugin.js');

const DOCS = [
  { id: '{A}', filePath: '/in/a.pdf', pages: ['mail ana@example.com', 'at Orchard Lane'] },
  { id: '{B}', filePath: '/in/b.pdf', pages: ['call +44 20 7946 0958'] },
  { id: '{C}', filePath: '/in/c.pdf', pages: ['nothing here', 'nor here', 'IBAN DE89 3704 0044 0532 0130 00'] },
];

function setUp(queue, search = '?batchRedaction=true&terms=Orchard%20Lane') {
  const plugin = new FakePlugin({ docs: DOCS });
  plugin.currentIndex = -1;
  plugin.batchQueue = [...queue];
  const options = parsePageOptions(search);
  const workflow = new Workflow({ bridge: new Bridge(plugin.transport), nameBase: 't' });
  const runner = new BatchRunner({
    workflow,
    scanOptions: { terms: options.terms, wholeWord: options.wholeWord, kinds: options.kinds },
  });
  return { plugin, runner };
}

// The batch commands in order, with the number of commands between them folded away.
const batchSteps = (plugin) => plugin.commands().filter((c) =>
  /Batch|CurrentFile|redactApply|saveDocument/.test(c));

test('takes each queued file through to its save and reports the one that did not open', async () => {
  const { plugin, runner } = setUp([0, null, 2]);
  // The most requests of one command that waited for their replies at the same time.
  const waiting = { now: 0, most: {} };
  const post = plugin.transport.postMessage;
  plugin.transport.postMessage = (text) => {
    const command = JSON.parse(text)[1];
    waiting.now += 1;
    waiting.most[command] = Math.max(waiting.most[command] || 0, waiting.now);
    post(text);
  };
  plugin.transport.addEventListener('message', () => { waiting.now -= 1; });
  const ended = await runner.run();

  assert.deepEqual(batchSteps(plugin), [
    'startBatchRedaction',
    'openNextFileForBatch', 'redactApply', 'saveDocument', 'closeCurrentFile',
    'openNextFileForBatch',
    'openNextFileForBatch', 'redactApply', 'saveDocument', 'closeCurrentFile',
    'openNextFileForBatch', 'endBatchRedaction']);
  assert.deepEqual(plugin.batchSaved, ['/in/a.pdf', '/in/c.pdf']);
  assert.ok(!plugin.commands().includes('hasOtherRedact'), 'the active document is not the batch\'s');
  assert.deepEqual(plugin.batchEnd, ended);
  assert.equal(ended.ret, END.failures);
  assert.deepEqual(ended.failedFileList, ['File 2 of 3']);
  assert.equal(ended.message, 'Finished: 2 of 3 file(s) redacted, 1 failed.');
  assert.deepEqual([runner.position, runner.pagesDone, runner.count, runner.pageCount], [3, 5, 3, 5]);

  // Every mark is named by its finding's kind, and each apply names all of its file's marks.
  const added = plugin.paramsOf('addAnnot').map((a) => a.uniqueIDName);
  assert.deepEqual(added.map((n) => n.split('_')[3]), ['email', 'term', 'iban']);
  assert.ok(added.every((n) => /^ai_plugin_redact_[A-Za-z0-9]+_t_\d+$/.test(n)));
  assert.deepEqual(plugin.paramsOf('redactApply').map((p) => p.uniqueIDNames), [added.slice(0, 2), added.slice(2)]);
  assert.equal(runner.workflow.sessions.size, 0, 'each closed file\'s review is dropped');
  // A file's reads, the searches of its pages and its marks go out together, the copy's text
  // with its searches; the other steps one by one.
  assert.deepEqual(['getFileTexts', 'findTextList', 'addAnnot', 'redactApply'].map((c) => waiting.most[c]),
    [3, 3, 2, 1]);
});

test('the end code says how the run went', async (t) => {
  const cases = [
    { name: 'every file redacted, one without findings', queue: [1, 0], ret: END.done, failed: [] },
    { name: 'a file whose text cannot be read', queue: [0, 2], fail: ['getFileTexts', 300011], ret: END.failures,
      failed: ['/in/a.pdf', '/in/c.pdf'] },
    { name: 'the start refused', queue: [0], fail: ['startBatchRedaction', 300001], ret: END.notStarted, failed: [] },
    { name: 'an empty batch', queue: [], ret: END.done, failed: [] },
  ];
  for (const c of cases) {
    await t.test(c.name, async () => {
      const { plugin, runner } = setUp(c.queue);
      if (c.fail) plugin.failures.set(...c.fail);
      const ended = await runner.run();
      assert.equal(ended.ret, c.ret);
      assert.deepEqual(ended.failedFileList, c.failed);
      assert.deepEqual(plugin.batchEnd, ended);
      // A file that opened is always closed again, whatever happened to it.
      assert.equal(plugin.commands().filter((x) => x === 'closeCurrentFile').length,
        c.ret === END.notStarted ? 0 : c.queue.filter((i) => i !== null).length);
    });
  }
});

test('Stop finishes the file in work and ends before the next one', async () => {
  const { plugin, runner } = setUp([0, 1, 2]);
  const save = plugin._saveDocument.bind(plugin);
  plugin._saveDocument = (params) => {
    runner.stop(); // pressed while the first file is being saved
    return save(params);
  };
  const ended = await runner.run();
  assert.deepEqual(batchSteps(plugin), ['startBatchRedaction', 'openNextFileForBatch', 'redactApply',
    'saveDocument', 'closeCurrentFile', 'endBatchRedaction']);
  assert.deepEqual(ended, { ret: END.stopped, message: 'Stopped: 1 of 3 file(s) redacted.', failedFileList: [] });
  assert.equal(runner.running, false);
});

test('a broken channel ends the run instead of asking for files forever', async () => {
  const { plugin, runner } = setUp([0, 1]);
  plugin.failures.set('openNextFileForBatch', 100001);
  const ended = await runner.run();
  assert.equal(ended.ret, END.failures);
  assert.match(ended.message, /^Broken off: 0 of 2 file\(s\) redacted\. /);
  assert.equal(plugin.commands().filter((c) => c === 'openNextFileForBatch').length, 1);
});
