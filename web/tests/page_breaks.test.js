'use strict';
// Values that a page break parts, found in the end of one page read on into the next.
const test = require('node:test');
const assert = require('node:assert/strict');
const { detectDocument } = require('../js/detectors.js');

// [kind, text, page] of a document's findings of the kinds asked.
const found = (pages, kinds) =>
  detectDocument(pages, { latestYear: 2024, kinds })
    .map((f) => [f.kind, f.text, f.page]);

test('a value parted by a page break is found, each page its own part', () => {
  const rows = [
    // the IBAN runs on, the page number and running foot between its parts left out
    [['Dear Ms Lind,\r\nplease pay to NL47 DBRO 0634 4611\r\nPage 1 of 2', 'Page 2 of 2\r\n89 before May.'],
      ['iban'], [['iban', 'NL47 DBRO 0634 4611', 0], ['iban', '89', 1]]],
    // a label at the foot of a page and its value at the head of the next, below the running head
    [['Staff file 2024\r\nDate of birth:\r\n- 1 -', 'Staff file 2024\r\n14 March 1983\r\nEnd'],
      ['dob'], [['dob', '14 March 1983', 1]]],
    [['Passport number:', 'X1234567\r\nissued in Leeds'], ['passport'], [['passport', 'X1234567', 1]]],
    // an address block parted between its street and its town
    [['Send it to:\r\nAna Lind\r\n12 High Street', 'London SW1A 1AA\r\nThank you'],
      ['address'], [['address', '12 High Street', 0], ['address', 'London SW1A 1AA', 1]]],
    // what each page holds whole is found once, on its page
    [['Mail ana@example.com', 'or bo@example.org'], ['email'],
      [['email', 'ana@example.com', 0], ['email', 'bo@example.org', 1]]],
    // no value: nothing is made up of the two pages' edges
    [['Total 1234', '5678 items'], ['card', 'phone', 'iban'], []],
  ];
  for (const [pages, kinds, expected] of rows) {
    assert.deepEqual(found(pages, kinds), expected, JSON.stringify(pages));
  }
});

test('pages without text and running heads do not join what they part', () => {
  const head = 'ACME QUARTERLY';
  const pages = [`${head}\r\nThe IBAN is NL47 DBRO`, `${head}\r\n0634 4611 89`, '', 'DBRO 0634'];
  assert.deepEqual(found(pages, ['iban']), [['iban', 'NL47 DBRO', 0], ['iban', '0634 4611 89', 1]]);
});

test('a term whose words a page break parts is found on each page, each page its part', () => {
  const terms = (pages, options = {}) =>
    detectDocument(pages, { terms: ['Jane Doe'], kinds: [], ...options })
      .map((f) => [f.term, f.page, Boolean(f.wholeWord)]);
  const rows = [
    // the page number at the head of the second page left out
    [['Signed by Jane', 'Page 2\r\nDoe and others'], {}, [['Jane', 0, true], ['Doe', 1, true]]],
    // the whole term on one page is found as it is, beside the parted one
    [['Jane Doe met Jane', 'Doe'], {}, [['Jane Doe', 0, false], ['Jane', 0, true], ['Doe', 1, true]]],
    // parts inside longer words are searched as they stand, not as whole words
    [['Signed by MaryJane', 'Doel'], {}, [['Jane', 0, false], ['Doe', 1, false]]],
    // a term asked as whole words is not found inside longer ones
    [['Signed by MaryJane', 'Doel'], { wholeWord: true }, []],
    // words of the term that are not at the pages' edges are no term
    [['Jane wrote', 'to Doe'], {}, []],
  ];
  for (const [pages, options, expected] of rows) {
    assert.deepEqual(terms(pages, options), expected, JSON.stringify(pages));
  }
});
