'use strict';
// A term that a page break parts is searched and marked on each page, part by part.
const test = require('node:test');
const assert = require('node:assert/strict');
const { FakePlugin, workflowOn } = require('./fake_plugin.js');

test('each page searches its part of a parted term as whole words and marks only those', async () => {
  const pages = ['Signed by Janet and Jane', 'Doe and Doerte', 'Jane Doe'];
  const plugin = new FakePlugin({ docs: [{ id: '{DOC-1}', filePath: '/data/a.pdf', pages }] });
  await workflowOn(plugin).scan({ terms: ['Jane Doe'], kinds: [] });

  assert.deepEqual(plugin.paramsOf('findTextList').map((p) => [p.startPage, p.textList]), [
    [0, [['Jane', 2]]], [1, [['Doe', 2]]], [2, [['Jane Doe', 0]]]]);
  const marked = plugin.paramsOf('addAnnot').map((a) => plugin.searches.get(a.searchKey)[a.index])
    .map(({ page, start, length }) => pages[page].slice(start, start + length));
  assert.deepEqual(marked, ['Jane', 'Doe', 'Jane Doe']);
});
