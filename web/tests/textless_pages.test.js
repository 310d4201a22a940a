'use strict';
const test = require('node:test');
const assert = require('node:assert/strict');
const { AutoRunner, SUMMARY_TAG } = require('../js/auto_run.js');
const { pagesWithoutText, pageList, noticeFor } = require('../js/textless_pages.js');
const { FakePlugin, workflowOn } = require('./fake_plugin.js');

function setUp(pages) {
  const plugin = new FakePlugin({ docs: [{ id: '{DOC-1}', filePath: '/data/scan.pdf', pages }] });
  return { plugin, workflow: workflowOn(plugin) };
}

test('pages with empty, blank or missing text are the ones without text', () => {
  for (const [texts, pages] of [
    [['a', '', ' \r\n\t', null, 'b'], [1, 2, 3]],
    [['a', 'b'], []],
    [[], []],
    [null, []],
  ]) {
    assert.deepEqual(pagesWithoutText(texts), pages, JSON.stringify(texts));
  }
});

test('the notice names the pages as a reader counts them', () => {
  assert.equal(noticeFor([]), null);
  assert.match(noticeFor([2]), /^Page 3 has no text to search/);
  assert.match(noticeFor([0, 4]), /^2 pages \(1 and 5\) have no text/);
  assert.equal(pageList([0, 1, 2]), '1, 2 and 3');
  assert.equal(pageList([...Array(12).keys()], 10), '1, 2, 3, 4, 5, 6, 7, 8, 9, 10 and 2 more');
});

test('a scan flags the pages without text; recognition then makes them searched', async () => {
  const { plugin, workflow } = setUp(['Mail: ana@example.com', '', '  ']);
  plugin.ocrTexts = { 1: 'Mail: bo@example.com' };
  await workflow.scan();
  assert.deepEqual(workflow.current.textless, [1, 2]);
  assert.ok(workflow.current.notices.some((n) => n.startsWith('2 pages (2 and 3) have no text')));
  assert.deepEqual(workflow.current.findings.map((f) => f.page), [0]);

  assert.equal(await workflow.recognizeText(), true);
  assert.deepEqual(plugin.paramsOf('runFileOCR'), [{ isShowDlg: true }]);
  await workflow.scan();
  assert.deepEqual(workflow.current.textless, [2]);
  assert.deepEqual(workflow.current.findings.map((f) => [f.kind, f.page]), [['email', 0], ['email', 1]]);
});

test('a cancelled recognition is no failure and changes nothing', async () => {
  const { plugin, workflow } = setUp(['']);
  plugin.ocrCancelled = true;
  assert.equal(await workflow.recognizeText(), false);
  assert.equal(workflow.error, null);
  assert.equal(workflow.status, 'The text recognition was not run.');
  plugin.ocrCancelled = false;
  plugin.failures.set('runFileOCR', -1);
  await assert.rejects(workflow.recognizeText());
  assert.match(workflow.error, /Recognising the text of the pages failed/);
});

test('the main job\'s summary line counts the pages without text', async () => {
  const { workflow } = setUp(['Mail: ana@example.com', '']);
  const lines = [];
  await new AutoRunner({ workflow, log: (line) => lines.push(line) }).start();
  const summary = JSON.parse(lines.find((l) => l.startsWith(SUMMARY_TAG)).slice(SUMMARY_TAG.length));
  assert.deepEqual(summary.pagesWithoutText, [1]);
});
