'use strict';
// Values as page layouts put them in the text: broken over lines by narrow columns, under their
// heading in a table's column, under their label in a form.
const test = require('node:test');
const assert = require('node:assert/strict');
const { detectText } = require('../js/detectors.js');

const found = (text, kind, options = {}) =>
  detectText(text, { latestYear: 2024, ...options }).filter((f) => f.kind === kind).map((f) => f.text);

test('a value broken over two lines is found, each line its own part', () => {
  const rows = [
    ['Please note the IBAN: NL47 DBRO 0634 4611\n89. Thanks', 'iban', ['NL47 DBRO 0634 4611', '89']],
    ['The card number on file is 5159 1937 9227\n2552. Please', 'card', ['5159 1937 9227', '2552']],
    ['the ni number: PJ 63\n81 88 D. The', 'nino', ['PJ 63', '81 88 D']],
    ['call +1 646 555\n0199 now', 'phone', ['+1 646 555', '0199']],
    // a justified column breaks an e-mail address without a hyphen
    ['E-Mail matthias.hoffmann@m\nail.example.org vermerkt\nor ana@example.com\nThen', 'email',
      ['matthias.hoffmann@m', 'ail.example.org', 'ana@example.com']],
    ['The file went to Michael\nHarrison, who will review it.', 'name', ['Michael', 'Harrison']],
    ['Address: 106 rue des\nLilas, 33000 Bordeaux', 'address', ['106 rue des', 'Lilas, 33000 Bordeaux']],
  ];
  for (const [text, kind, expected] of rows) assert.deepEqual(found(text, kind), expected, text);
  // the lines' own findings go first: a town is not joined to the next line's first word
  assert.deepEqual(found('12 rue de la Paix\n75002 Paris\nMadame, merci', 'address'), ['12 rue de la Paix', '75002 Paris']);
});

test('a year or an id on the line before a phone number does not hide it', () => {
  assert.deepEqual(found('Born 1993\n020 7946 0958', 'phone'), ['020 7946 0958']);
  assert.deepEqual(found('1993 020 7946 0958', 'phone'), []);
});

// A register as the editor's text gives it: one cell a line.
function register(headings, rows) {
  return ['Staff register', ...headings, ...rows.flat(), 'Quality Assurance reviewed the list twice.'].join('\n');
}

test('a table column under its heading', () => {
  const people = [['Olivia Morgan', 'EMP-20417', '533401172', '23/08/1967'],
    ['Jürgen Krüger', 'EMP-20931', '146209562', 'August 3, 1996'],
    ['Élodie Marchand', 'EMP-31002', '833781958', '2001-04-07']];
  const text = register(['Name', 'Employee ID', 'Passport No.', 'Date of birth'], people);
  assert.deepEqual(found(text, 'name'), people.map((p) => p[0]));
  assert.deepEqual(found(text, 'recordNumber'), people.map((p) => p[1]));
  assert.deepEqual(found(text, 'passport'), people.map((p) => p[2]));
  assert.deepEqual(found(text, 'dob'), people.map((p) => p[3]));
  // the editor's text ends lines with CR LF; a name cell is not joined to the address cell below
  const cells = 'Name\r\nAddress\r\nJavier García\r\nCalle de Alcalá 249, 28014 Madrid\r\nLucía Fernández\r\n' +
    'Avenida de la Constitución 13, 41004 Sevilla\r\nCarmen Navarro\r\nCalle Mayor 160, 28013 Madrid';
  assert.deepEqual(found(cells, 'name'), ['Javier García', 'Lucía Fernández', 'Carmen Navarro']);
  assert.equal(found(cells, 'address').length, 3);
  // a date that a narrow cell breaks over three lines is found, each line its own part
  const narrow = register(['Name', 'Date of birth', 'IBAN'], [['Laura Foster', 'November\r\n26,\r\n1964'],
    ['Hannah Graham', 'August 3, 1996'], ['Megan Mitchell', 'May 2, 2001']]);
  assert.deepEqual(found(narrow, 'dob'), ['November', '26', '1964', 'August 3, 1996', 'May 2, 2001']);
  // two rows are no column: only the value right under the heading is taken
  const two = register(['Employee ID', 'Passport No.'], [['EMP-20417', '533401172'], ['EMP-20931', '146209562']]);
  assert.deepEqual(found(two, 'recordNumber'), []);
  assert.deepEqual(found('Employee ID\nEMP-20417\nEMP-20931', 'recordNumber'), ['EMP-20417']);
  // a heading within a line heads nothing
  const prose = 'The staff register lists 24601, 24602 and 24603.\n24604\n24605';
  assert.deepEqual(found(prose, 'recordNumber'), []);
});

test('a form puts the value under its label, perhaps after a blank line', () => {
  const form = 'Name\n\nJürgen Krüger\n\nPassnummer\n\nFH9ML7YCK\n\nGeburtsdatum\n\n14. März 1981\n\nKundennummer\nKD-448812';
  assert.deepEqual(found(form, 'name'), ['Jürgen Krüger']);
  assert.deepEqual(found(form, 'passport'), ['FH9ML7YCK']);
  assert.deepEqual(found(form, 'dob'), ['14. März 1981']);
  assert.deepEqual(found(form, 'recordNumber'), ['KD-448812']);
  // a heading row of a table is no label of the next cell's date
  assert.deepEqual(found('Date of birth\n\nIBAN\n\nOlivia Morgan\n\n23/08/1967', 'dob'), []);
});
