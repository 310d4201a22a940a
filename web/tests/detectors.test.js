'use strict';
const test = require('node:test');
const assert = require('node:assert/strict');
const { detectText, detectDocument, parseTerms } = require('../js/detectors.js');

// The texts a detector finds in `text`, of one kind or all.
function found(text, kind, options = {}) {
  return detectText(text, { latestYear: 2024, ...options })
    .filter((f) => !kind || f.kind === kind)
    .map((f) => f.text);
}

test('e-mail addresses, as written, without trailing punctuation', () => {
  assert.deepEqual(found('Mail ana.lind+work@mail.example.co.uk, or bo@x.io.', 'email'),
    ['ana.lind+work@mail.example.co.uk', 'bo@x.io']);
  assert.deepEqual(found('not@mail, @example.com, a@b.c, user@@example.com', 'email'), []);
});

test('phone numbers in international and national forms', () => {
  assert.deepEqual(found('Call +1 555 0134 2287 or +44 20 7946 0958 today', 'phone'),
    ['+1 555 0134 2287', '+44 20 7946 0958']);
  assert.deepEqual(found('(555) 014-2290', 'phone'), ['(555) 014-2290']);
  assert.deepEqual(found('(555) 201-7788; 555-303-4412; 0044 20 7946 0958', 'phone'),
    ['(555) 201-7788', '555-303-4412', '0044 20 7946 0958']);
  assert.deepEqual(found('Tel. 020 7946 0958, 06 12 34 56 78, 030/12345678', 'phone'),
    ['020 7946 0958', '06 12 34 56 78', '030/12345678']);
});

test('no phone numbers in dates, amounts, ids or short numbers', () => {
  const text = 'On 12/05/1979 and 2011-03-17 we paid 1 250 000 for order 4411 of 04.05.2023, ' +
    'room 555-12, code 123-456-789, year 2024, +12 34';
  assert.deepEqual(found(text, 'phone'), []);
});

test('card numbers pass the Luhn check, in groups or as one run', () => {
  assert.deepEqual(found('Card 4539 1488 0343 6467, Amex 378282246310005, 4111-1111-1111-1111', 'card'),
    ['4539 1488 0343 6467', '378282246310005', '4111-1111-1111-1111']);
  const misses = 'Bad 4539 1488 0343 6468, mixed 4111-1111 1111-1111, zeros 0000 0000 0000 0000, ' +
    'split 45 39 14 88 03 43 64 67, short 4111 1111 111, longer 4539 1488 0343 6467 1234';
  assert.deepEqual(found(misses, 'card'), []);
});

test('IBANs have the right length for the country and pass mod-97', () => {
  assert.deepEqual(found('IBAN: DE89 3704 0044 0532 0130 00 and GB82WEST12345698765432.', 'iban'),
    ['DE89 3704 0044 0532 0130 00', 'GB82WEST12345698765432']);
  const misses = 'DE88 3704 0044 0532 0130 00, DE89 3704 0044 0532 0130 001, ' +
    'GB82 WEST 1234 5698 7654 3, QQ12 3456 7890 1234, de89370400440532013000';
  assert.deepEqual(found(misses, 'iban'), []);
  // neither is a valid IBAN taken for a phone number or a card by its digits
  assert.deepEqual(found('DE89 3704 0044 0532 0130 00').length, 1);
});

test('national identity numbers with their own checks', () => {
  const text = 'SSN 536-22-8726; NI AB 12 34 56 C; DNI 12345678Z, NIE X1234567L; ' +
    'NIR 1 85 05 78 006 084 91; BE 85.07.30-033.28 and 01.02.03-004.67';
  assert.deepEqual(found(text, 'nationalId'), ['536-22-8726', 'AB 12 34 56 C', '12345678Z',
    'X1234567L', '1 85 05 78 006 084 91', '85.07.30-033.28', '01.02.03-004.67']);
  const misses = '666-12-3456 000-12-3456 912-34-5678 123-00-4567 123-45-0000 078-05-1120 ' +
    'GB 12 34 56 C, QQ123456C, AB123456E, 12345678A, 1 85 05 78 006 084 92, 85.07.30-033.29, ' +
    '12-05-1979, 555-303-4412';
  assert.deepEqual(found(misses, 'nationalId'), []);
});

test('a date is a date of birth only close after a birth cue', () => {
  const text = 'Date of birth: 1984-03-17\r\nBorn 28 February 1991, DOB\r\n12/05/79. ' +
    'born on March 3rd, 1990; D.O.B. 02.11.1969';
  assert.deepEqual(found(text, 'dob'), ['1984-03-17', '28 February 1991', '12/05/79',
    'March 3rd, 1990', '02.11.1969']);
  const misses = 'Signed on 2 January 2024. Born in a small town. Then on 3 May 1990 ' +
    'she moved. DOB: unknown. Start 1999-01-01. Born 31/02/1980, DOB 2030-01-01, ' +
    'Born 12 years ago on 3 May 2001, newborn 2020-01-01';
  assert.deepEqual(found(misses, 'dob'), []);
});

test('user terms: any case, whole words when asked, across line breaks', () => {
  const text = 'Project Nightjar with nightjars; PROJECT\r\nnightjar at Orchard-Lane';
  assert.deepEqual(found(text, 'term', { terms: ['project nightjar', 'lane'] }),
    ['Project Nightjar', 'PROJECT\r\nnightjar', 'Lane']);
  assert.deepEqual(found(text, 'term', { terms: ['nightjar'], wholeWord: true }),
    ['Nightjar', 'nightjar']);
  assert.deepEqual(found(text, 'term', { terms: ['nightjar'] }),
    ['Nightjar', 'nightjar', 'nightjar']);
  assert.deepEqual(parseTerms(' Ana Lind, ana   lind;\nNightjar,, '), ['Ana Lind', 'Nightjar']);
  // Pattern characters in a term are plain text.
  assert.deepEqual(found('Orchard-Lane (A+B) 1.5', 'term', { terms: ['orchard-lane', '(a+b)', '1.5'] }),
    ['Orchard-Lane', '(A+B)', '1.5']);
});

test('kinds can be left out, and overlaps go to the stronger kind', () => {
  const text = 'Mail 555-303-4412@example.com, IBAN DE89 3704 0044 0532 0130 00, phone 555-303-4412';
  assert.deepEqual(detectText(text).map((f) => [f.kind, f.text]), [
    ['email', '555-303-4412@example.com'],
    ['iban', 'DE89 3704 0044 0532 0130 00'],
    ['phone', '555-303-4412'],
  ]);
  // without e-mail detection the number inside the address is a phone number of its own
  assert.deepEqual(found(text, null, { kinds: ['phone'] }), ['555-303-4412', '555-303-4412']);
});

test('document findings are one per kind, text and page', () => {
  const pages = ['ana@example.com wrote to ana@example.com; Ana met ANA', '', 'ana@example.com'];
  assert.deepEqual(detectDocument(pages, { terms: ['ana'], wholeWord: true }), [
    { kind: 'email', text: 'ana@example.com', page: 0, occurrences: 2 },
    { kind: 'term', text: 'ana', page: 0, occurrences: 4, term: 'ana' },
    { kind: 'email', text: 'ana@example.com', page: 2, occurrences: 1 },
    { kind: 'term', text: 'ana', page: 2, occurrences: 1, term: 'ana' },
  ]);
});
