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

// Each row: the text, the kind, what is found (in text order).
function table(rows, options) {
  for (const [text, kind, expected] of rows) {
    assert.deepEqual(found(text, kind, options), expected, `${kind} in ${JSON.stringify(text)}`);
  }
}

test('phone numbers by region, with or without a country code', () => {
  table([
    ['Call +1 212 555 0147 or +44 20 7946 0958 today', 'phone', ['+1 212 555 0147', '+44 20 7946 0958']],
    ['(212) 555-0147; 415-555-0132; 0044 20 7946 0958', 'phone',
      ['(212) 555-0147', '415-555-0132', '0044 20 7946 0958']],
    ['Tel. 020 7946 0958, 06 12 34 56 78, 030/12345678', 'phone',
      ['020 7946 0958', '06 12 34 56 78', '030/12345678']],
    // a run of digits is a phone number only when a label says so
    ['Phone: 02079460958 and invoice 02079460958', 'phone', ['02079460958']],
    // numbers that no region's plan holds
    ['1234 567 890, 0123 45', 'phone', []],
  ]);
  // with a + and a country's calling code a number outside the plan is still taken, less surely
  const unlisted = detectText('+44 7700 900461, +1 555 201 7788, +999 1234 5678', { kinds: ['phone'] });
  assert.deepEqual(unlisted.map((f) => [f.text, f.confidence]), [['+44 7700 900461', 0.6], ['+1 555 201 7788', 0.6]]);
});

test('no phone numbers in dates, amounts, ids or short numbers', () => {
  const text = 'On 12/05/1979 and 2011-03-17 we paid 1 250 000 for order 4411 of 04.05.2023, ' +
    'room 555-12, code 123-456-789, year 2024, +12 34, ref 20231104';
  assert.deepEqual(found(text, 'phone'), []);
});

test('regions can be narrowed to those of the document', () => {
  assert.deepEqual(found('06 12 34 56 78 and 020 7946 0958', 'phone', { regions: ['GB'] }), ['020 7946 0958']);
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

test('US social security numbers: issued ranges, one separator, a run only with its label', () => {
  table([
    ['SSN 536-22-8726, 536 22 8726', 'ssn', ['536-22-8726', '536 22 8726']],
    ['Social Security No.: 536228726', 'ssn', ['536228726']],
    ['536228726 is a number; 536-22 8726 mixes separators', 'ssn', []],
    ['666-12-3456 000-12-3456 912-34-5678 123-00-4567 123-45-0000 078-05-1120', 'ssn', []],
  ]);
});

test('UK National Insurance numbers: issued prefixes, suffix A-D', () => {
  table([
    ['NI AB 12 34 56 C; NINO: JG123456A', 'nino', ['AB 12 34 56 C', 'JG123456A']],
    ['GB 12 34 56 C, QQ123456C, AB123456E, DA123456A, AO123456B, TN123456A', 'nino', []],
  ]);
});

test('other national identity numbers with their own checks', () => {
  table([
    ['DNI 12345678Z, NIE X1234567L; NIR 1 85 05 78 006 084 91; BE 85.07.30-033.28 and 01.02.03-004.67',
      'nationalId', ['12345678Z', 'X1234567L', '1 85 05 78 006 084 91', '85.07.30-033.28', '01.02.03-004.67']],
    ['12345678A, 1 85 05 78 006 084 92, 85.07.30-033.29, 12-05-1979', 'nationalId', []],
  ]);
});

test('passport and record numbers are taken after their labels only', () => {
  table([
    ['Passport No.: 533401172, Reisepass C01X00T47', 'passport', ['533401172', 'C01X00T47']],
    ['Passport number\r\nP7349120', 'passport', ['P7349120']],
    ['533401172 alone; passport photos 2; passport ABCDEFGH', 'passport', []],
    // under a heading "Passnummer", the digits of other labelled numbers are no passport column
    ['Passnummer\r\nGF795Z8L9\r\nKunde: KD-814855.\r\nKunde: KD-028983.\r\nKunde: KD-025890.', 'passport',
      ['GF795Z8L9']],
    ['Employee ID: EMP-20417; Customer number CU/2023/00981. Case Ref: 2024-CV-00123', 'recordNumber',
      ['EMP-20417', 'CU/2023/00981', '2024-CV-00123']],
    ['Account No. 31926819; Kundennummer: 4711-0815', 'recordNumber', ['31926819', '4711-0815']],
    ['EMP-20417 unlabelled; the customer was 12 minutes late; case 7', 'recordNumber', []],
  ]);
  // "the account 2023 report" may not be a number called so: it falls under the threshold
  assert.deepEqual(found('the account 2023 report', 'recordNumber'), []);
  assert.deepEqual(found('the account 2023 report', 'recordNumber', { minConfidence: 0.4 }), ['2023']);
});

test('postal addresses, each line of one its own finding', () => {
  table([
    ['Address: 221B Baker Street, London NW1 6XE', 'address', ['221B Baker Street, London NW1 6XE']],
    ['at 1600 Pennsylvania Avenue NW, Washington, DC 20500 now', 'address',
      ['1600 Pennsylvania Avenue NW, Washington, DC 20500']],
    ['Flat 3, 12 High Street\r\nCamden\r\nLondon NW1 8QP', 'address',
      ['Flat 3, 12 High Street', 'Camden', 'London NW1 8QP']],
    ['Berliner Straße 45a, 60311 Frankfurt am Main', 'address', ['Berliner Straße 45a, 60311 Frankfurt am Main']],
    ['12 rue de la Paix\r\n75002 Paris', 'address', ['12 rue de la Paix', '75002 Paris']],
    ['Calle Mayor 3, 2º B, 28013 Madrid', 'address', ['Calle Mayor 3, 2º B, 28013 Madrid']],
    ['Keizersgracht 123, 1015 CJ Amsterdam', 'address', ['Keizersgracht 123, 1015 CJ Amsterdam']],
    ['We met on Main Street. In 2019 Road works began; page 12 Street map', 'address', []],
  ]);
});

test("people's names: by the recogniser in running text, after titles and labels in any language", () => {
  table([
    ["Our employee Sarah O'Connor will call. Maria Gonzalez agreed.", 'name', ["Sarah O'Connor", 'Maria Gonzalez']],
    ['Dear Mr. James Whitfield,\r\nName: Priya Raman\r\nYours sincerely,\r\nThomas Becker', 'name',
      ['James Whitfield', 'Priya Raman', 'Thomas Becker']],
    ['Sehr geehrte Frau Anna-Lena Schmidt, Herr Jan van der Berg kommt. Mme Élise Fournier', 'name',
      ['Anna-Lena Schmidt', 'Jan van der Berg', 'Élise Fournier']],
    ['Dear Sir or Madam, Name: see below. The Board of Directors met in London on Monday.', 'name', []],
    // a letter's closing above the signer is no part of the name
    ['Wir haben es vermerkt.\nMit freundlichen Grüßen\nLukas Schneider', 'name', ['Lukas Schneider']],
    // German, French and Spanish first names of the lists, with no title or label before them
    ['Laut Wiebke Kühnel kam es zu spät. Selon Gwenaëlle Duchêne, oui. El martes Begoña\nEtxeberria envió',
      'name', ['Wiebke Kühnel', 'Gwenaëlle Duchêne', 'Begoña', 'Etxeberria']],
    // words of the lists that are other words, places and institutions named after people
    ['The General Assembly met in Paris on May Day, avenue Victor Hugo, near Florence Street, ' +
      'by the San Martín Ltd building.', 'name', []],
  ]);
});

test('a date is a date of birth only close after a birth cue', () => {
  const text = 'Date of birth: 1984-03-17\r\nBorn 28 February 1991, DOB\r\n12/05/79. ' +
    'born on March 3rd, 1990; D.O.B. 02.11.1969; Geburtsdatum: 12. März 1985; née le 3 mai 1970\r\n' +
    'DOB on file for Jonas Pemberly: 1975-09-30';
  assert.deepEqual(found(text, 'dob'), ['1984-03-17', '28 February 1991', '12/05/79',
    'March 3rd, 1990', '02.11.1969', '12. März 1985', '3 mai 1970', '1975-09-30']);
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
  const text = 'Mail 212-555-0147@example.com, IBAN DE89 3704 0044 0532 0130 00, phone 212-555-0147';
  assert.deepEqual(detectText(text).map((f) => [f.kind, f.text]), [
    ['email', '212-555-0147@example.com'],
    ['iban', 'DE89 3704 0044 0532 0130 00'],
    ['phone', '212-555-0147'],
  ]);
  // without e-mail detection the number inside the address is a phone number of its own
  assert.deepEqual(found(text, null, { kinds: ['phone'] }), ['212-555-0147', '212-555-0147']);
});

test('every finding has a confidence, and a threshold leaves out the less certain', () => {
  const text = 'Card 4539 1488 0343 6467; number 6011000990139424; ref 1234567812345670';
  assert.deepEqual(detectText(text, { kinds: ['card'] }).map((f) => [f.text, f.confidence]),
    [['4539 1488 0343 6467', 0.97], ['6011000990139424', 0.9]]);
  // a Luhn-valid run with no card scheme's prefix is kept only under a low threshold
  assert.deepEqual(found(text, 'card', { minConfidence: 0.3 }), ['4539 1488 0343 6467', '6011000990139424', '1234567812345670']);
  assert.deepEqual(found(text, 'card', { minConfidence: 0.95 }), ['4539 1488 0343 6467']);
});

test('document findings are one per kind, text and page', () => {
  const pages = ['ana@example.com wrote to ana@example.com; Ana met ANA', '', 'ana@example.com'];
  assert.deepEqual(detectDocument(pages, { terms: ['ana'], wholeWord: true }), [
    { kind: 'email', text: 'ana@example.com', page: 0, occurrences: 2, confidence: 0.99 },
    { kind: 'term', text: 'ana', page: 0, occurrences: 4, confidence: 1, term: 'ana' },
    { kind: 'email', text: 'ana@example.com', page: 2, occurrences: 1, confidence: 0.99 },
    { kind: 'term', text: 'ana', page: 2, occurrences: 1, confidence: 1, term: 'ana' },
  ]);
});
