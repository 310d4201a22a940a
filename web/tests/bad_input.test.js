'use strict';
// Pages and terms that are hard on the detectors: each answers, and in time that grows with the
// text (a step that went back over the page for each match would take many minutes here).
const test = require('node:test');
const assert = require('node:assert/strict');
const { detectDocument, parseTerms } = require('../js/detectors.js');

test('long pages, mixed scripts, marks, lone surrogates and blank terms', { timeout: 120000 }, () => {
  const letters = 'x'.repeat(100000);
  const rows = [
    // a page of 100,000 letters with no space, and the same letters at the next page's start
    [[letters, letters], 'x', [['x', 0, 100000], ['x', 1, 100000]]],
    [[`${'y'.repeat(99999)}x`, `x${'y'.repeat(99999)}`], 'x x', [['x', 0, 1], ['x', 1, 1]]],
    // five scripts on one page
    [['Ana Λίνα Анна אנה 安娜, Ана'], '安娜, анна', [['анна', 0, 1], ['安娜', 0, 1]]],
    // a term with a combining mark finds the composed letter, and the other way round
    [['café and cafe\u0301'], 'cafe\u0301', [['cafe\u0301', 0, 2]]],
    [['café and cafe\u0301'], 'café', [['café', 0, 2]]],
    // a lone surrogate is a character like any other
    [['a\ud800b and ab'], '\ud800', [['\ud800', 0, 1]]],
    // only blanks: no term
    [['some text'], ' \t\u00a0 ,\r\n ; ', []],
    // a word hyphenated at the end of a page's last line: each page's part is no term of its own
    [['The confiden-', 'tiality clause'], 'confidentiality', []],
  ];
  for (const [pages, terms, expected] of rows) {
    const found = detectDocument(pages, { terms: parseTerms(terms), kinds: [] })
      .map((f) => [f.term, f.page, f.occurrences]);
    assert.deepEqual(found, expected, JSON.stringify(terms));
  }
});

test('every detector reads a page of one long word and one of many names in a few seconds', { timeout: 120000 }, () => {
  const pages = ['4'.repeat(100000), 'Ab'.repeat(50000), 'Heike '.repeat(5000)];
  const started = Date.now();
  const found = detectDocument(pages, { latestYear: 2024 });
  assert.ok(Date.now() - started < 60000);
  assert.ok(found.every((f) => f.page === 2 && f.kind === 'name'), JSON.stringify(found.slice(0, 3)));
});
