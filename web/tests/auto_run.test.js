'use strict';
const test = require('node:test');
const assert = require('node:assert/strict');
const { Bridge, parseEvent } = require('../js/bridge.js');
const { Workflow } = require('../js/workflow.js');
const { AutoRunner } = require('../js/auto_run.js');
const { parsePageOptions } = require('../js/page_options.js');
const { FakePlugin } = require('./fake_plugin.js');

function setUp(docs, search = '?auto=1&terms=Orchard%20Lane') {
  const plugin = new FakePlugin({ docs });
  const workflow = new Workflow({ bridge: new Bridge(plugin.transport), nameBase: 't' });
  const options = parsePageOptions(search);
  const lines = [];
  const runner = new AutoRunner({
    workflow,
    scanOptions: { terms: options.terms, wholeWord: options.wholeWord, kinds: options.kinds },
    log: (line) => lines.push(line),
  });
  plugin.onEvent = (event) => {
    workflow.handleEvent(parseEvent(event));
    runner.handleEvent(parseEvent(event));
  };
  return { plugin, runner, lines, options };
}

const summaryOf = (line) => JSON.parse(line.replace(/^SABLEMARK-SUMMARY /, ''));

test('the page address switches on the automatic mode and carries terms and kinds', () => {
  assert.deepEqual(parsePageOptions('?platform=linux&auto=1&terms=Ana,Bo&terms=ana&kinds=email,iban,bogus&ThemeColor=1a73e8' +
    '&minConfidence=0.8&regions=gb,FR,x1&ai_domain=http://127.0.0.1:8123/'),
  { auto: true, accountPage: false, batch: false, terms: ['Ana', 'Bo'], wholeWord: false, kinds: ['email', 'iban'],
    accent: '#1a73e8', minConfidence: 0.8, regions: ['GB', 'FR'], service: 'http://127.0.0.1:8123' });
  assert.deepEqual(parsePageOptions(''), { auto: false, accountPage: false, batch: false, terms: [], wholeWord: false,
    kinds: null, accent: null, minConfidence: 0.5, regions: null, service: null });
  for (const address of ['javascript:alert(1)', 'file:///etc/passwd', 'not an address']) {
    assert.equal(parsePageOptions(`?ai_domain=${encodeURIComponent(address)}`).service, null, address);
  }
  assert.equal(parsePageOptions('?defaultPage=MyPlan').accountPage, true);
  // a threshold outside 0..1 or not a number is the default one
  assert.equal(parsePageOptions('?minConfidence=2').minConfidence, 0.5);
  assert.equal(parsePageOptions('?minConfidence=abc').minConfidence, 0.5);
  assert.equal(parsePageOptions('?x=1&batchRedaction=true&theme=win_native').batch, true);
});

test('runs the current document through to the saved copy and writes one summary line', async () => {
  const { plugin, runner, lines } = setUp([{ id: '{A}', filePath: '/in/a.pdf',
    pages: ['ana@example.com at Orchard Lane', 'IBAN DE89 3704 0044 0532 0130 00'] }]);
  await runner.start();
  assert.deepEqual(plugin.commands().filter((c) => !/^(addAnnot|findTextList)$/.test(c)), [
    'getCurrentDoc', 'getCurrentDoc', 'isCurrentDocModified', 'getFilePageCount', 'getFileTexts',
    'hasOtherRedact', 'redactApply', 'saveDocument', 'getCurrentDoc', 'getFileTexts']);
  assert.equal(plugin.applied.length, 3);
  assert.deepEqual(lines.map(summaryOf), [{
    file: '/in/a.pdf', output: '/in/a_redacted.pdf', pages: 2, pagesWithoutText: [],
    findings: { email: 1, iban: 1, card: 0, ssn: 0, nino: 0, nationalId: 0, passport: 0, dob: 0,
      recordNumber: 0, phone: 0, address: 0, name: 0, term: 1 }, total: 3,
    verified: { checked: 3, remaining: [] },
  }]);
  assert.match(lines[0], /^SABLEMARK-SUMMARY \{/);
});

test('waits for a document, runs each new one once, and never its own output', async () => {
  const { plugin, runner, lines } = setUp([
    { id: '{A}', filePath: '/in/a.pdf', pages: ['nothing to see'] },
    { id: '{B}', filePath: '/in/b.pdf', pages: ['call +44 20 7946 0958'] },
  ]);
  plugin.currentIndex = -1;
  await runner.start();
  assert.deepEqual(lines, []);

  plugin.activate(0);
  await runner._tail;
  plugin.activate(1);
  await runner._tail;
  plugin.activate(0); // back to a document already done
  await runner._tail;
  assert.deepEqual(lines.map((l) => [summaryOf(l).file, summaryOf(l).total]),
    [['/in/a.pdf', 0], ['/in/b.pdf', 1]]);
  assert.ok(!plugin.paramsOf('redactApply').some((p) => p.uniqueIDNames.length === 0),
    'a document without findings is saved without applying');

  plugin.docs.push({ id: '{C}', filePath: '/in/b_redacted.pdf', pages: ['+44 20 7946 0958'] });
  plugin.activate(2); // a copy it wrote, opened as a document of its own
  await runner._tail;
  assert.equal(lines.length, 2);
});

test('a failure writes an error line instead of a summary', async () => {
  const { plugin, runner, lines } = setUp([{ id: '{A}', filePath: '/in/a.pdf', pages: ['a@example.com'] }]);
  plugin.promptAnswer = 2;
  await runner.start();
  assert.equal(lines.length, 1);
  const error = JSON.parse(lines[0].replace(/^SABLEMARK-ERROR /, ''));
  assert.deepEqual({ ...error, message: undefined },
    { file: '/in/a.pdf', command: 'redactApply', ret: 400024, message: undefined });
  assert.match(error.message, /cancelled at the prompt/);
});

test('a mark undone before the apply is marked again, so the summary holds every finding', async () => {
  const { plugin, runner, lines } = setUp([{ id: '{A}', filePath: '/in/a.pdf',
    pages: ['ana@example.com at Orchard Lane'] }]);
  const original = plugin._redactApply.bind(plugin);
  let first = true;
  plugin._redactApply = (params) => {
    if (first) plugin.annots.delete(params.uniqueIDNames[0]); // gone from the editor meanwhile
    first = false;
    return original(params);
  };
  await runner.start();
  assert.equal(plugin.paramsOf('redactApply').length, 2);
  assert.deepEqual(summaryOf(lines[0]).verified, { checked: 2, remaining: [] });
});
