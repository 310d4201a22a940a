// Numbers that only their label makes personal: passport numbers and account, employee,
// customer, case and similar record numbers. A value is taken when it follows its label closely
// ("Passport No.: 533401172", "Employee ID  EMP-20417"), on the same line or at the start of the
// next one (forms and tables put the value under or beside its label).
(function (root) {
  'use strict';

  const node = typeof require === 'function';
  const edges = node ? require('./text_edges.js') : root.Sablemark.textEdges;

  const NUMBER_WORD = '(?:[ \\t]*(?:no\\.?|nr\\.?|num\\.?|number|#|id|ref\\.?|reference|code))?';

  function cueExpression(words) {
    return new RegExp(`(?<![\\p{L}\\p{N}])(?:${words.join('|')})${NUMBER_WORD}(?![\\p{L}\\p{N}])[ \\t]*[:#]?`, 'giu');
  }

  const PASSPORT_CUE = cueExpression([
    'passport', 'pass?port[ \\t]+no', 'reisepass(?:nummer)?', 'passnummer', 'pass-?nr\\.?',
    'num[ée]ro[ \\t]+de[ \\t]+passeport', 'passeport', 'n[úu]mero[ \\t]+de[ \\t]+pasaporte', 'pasaporte',
    'passaporto', 'paspoort(?:nummer)?',
  ]);
  const RECORD_CUE = cueExpression([
    'account', 'acct\\.?', 'a/c', 'bank[ \\t]+account', 'employee', 'staff', 'payroll', 'personnel',
    'customer', 'client', 'member(?:ship)?', 'case', 'claim', 'policy', 'patient', 'medical[ \\t]+record',
    'mrn', 'student', 'contract', 'tenant', 'kundennummer', 'kunden-?nr\\.?', 'personalnummer',
    'mitarbeiternummer', 'kontonummer', 'aktenzeichen', 'versicherungsnummer', 'vertragsnummer',
    'num[ée]ro[ \\t]+(?:de[ \\t]+)?(?:client|compte|dossier|salari[ée])', 'n°[ \\t]+(?:client|compte|dossier)',
    'n[úu]mero[ \\t]+de[ \\t]+(?:cliente|cuenta|empleado|expediente)', 'klantnummer', 'dossiernummer',
  ]);

  // A passport number: 6 to 10 letters and digits, at least one of them a digit, letters in
  // capitals.
  const PASSPORT_VALUE = new RegExp(edges.WORD_BEFORE + '[A-Z0-9]{6,10}' + edges.WORD_AFTER, 'gu');
  // A record number: letters, digits and inner separators, at least three digits.
  const RECORD_VALUE = new RegExp(
    edges.WORD_BEFORE + '[A-Z0-9]+(?:[\\-/.][A-Z0-9]+){0,4}' + edges.WORD_AFTER, 'gu');

  const EXPLICIT_CUE = /(?:no\.?|nr\.?|num\.?|number|nummer|#|id|ref\.?|reference|code|[:#])[ \t]*$/iu;

  const LINK_WORDS = '(?:on|in|file|record|our|is|was|reads|ist|lautet|est|es|the|of)';
  const GAP = new RegExp(
    `^[ \\t]*(?:\\r?\\n[ \\t]*){0,2}(?:[:#\\-–][ \\t]*)?(?:(?:${LINK_WORDS}[ \\t]+){1,4}(?:[:#][ \\t]*)?)?`, 'u');
  // How far below a column's heading its values are looked for.
  const COLUMN_REACH = 6000;
  const COLUMN_LINES = 300;

  // A heading alone on its line may head a table's column: values of one shape (letters as A,
  // digits as 9) that come back three times or more below it are that column's. A value
  // joined to other digit groups, or to a prefix by a dash or slash ("KD-814855"), is part of
  // some other number.
  function column(text, from, valueShape, accept, kind) {
    const window = text.slice(from, from + COLUMN_REACH).split('\n').slice(0, COLUMN_LINES).join('\n');
    const byShape = new Map();
    valueShape.lastIndex = 0;
    for (const m of window.matchAll(valueShape)) {
      const start = from + m.index;
      const end = start + m[0].length;
      const prefixed = /[\p{L}\p{N}][-–\/]$/u.test(text.slice(Math.max(0, start - 2), start)) ||
        /^[-–\/][\p{L}\p{N}]/u.test(text.slice(end, end + 2));
      if (!accept(m[0]) || m[0].length < 5 || prefixed || !edges.standsAlone(text, start, end)) continue;
      // letters and digits mixed at random (as in passport numbers) count by length alone
      const mixed = /^[A-Z0-9]+$/.test(m[0]) && /[A-Z]/.test(m[0]) && /\d/.test(m[0]);
      const shape = mixed ? `mixed ${m[0].length}` : m[0].replace(/\p{L}/gu, 'A').replace(/\d/g, '9');
      if (!byShape.has(shape)) byShape.set(shape, []);
      byShape.get(shape).push({ kind, text: m[0], start, end: start + m[0].length, confidence: 0.7 });
    }
    return [...byShape.values()].filter((values) => values.length >= 3).flat();
  }

  // A heading stands alone on its line (a table's header cell).
  function aloneOnLine(text, start, end) {
    const lineStart = text.lastIndexOf('\n', start - 1) + 1;
    let lineEnd = text.indexOf('\n', end);
    if (lineEnd < 0) lineEnd = text.length;
    return !text.slice(lineStart, start).trim() && !text.slice(end, lineEnd).trim();
  }

  function digitCount(text) {
    return text.replace(/\D/g, '').length;
  }

  // The first value after each cue, within reach, when it has the value's shape.
  function valuesAfterCues(text, cues, valueShape, accept, kind, confidence) {
    const found = [];
    cues.lastIndex = 0;
    for (const cue of text.matchAll(cues)) {
      const cueEnd = cue.index + cue[0].length;
      // The value comes next: blanks, a line break (or a blank line), a colon or dash, and a few
      // linking words ("on file is") may stand between.
      const gap = GAP.exec(text.slice(cueEnd, cueEnd + 80))[0];
      const start = cueEnd + gap.length;
      valueShape.lastIndex = start;
      const m = valueShape.exec(text);
      // a table's heading has no colon; a label with one ("Passport:") is a form's or the text's
      const heading = aloneOnLine(text, cue.index, cueEnd) && !/[:#]/.test(cue[0] + gap);
      if (heading) found.push(...column(text, cueEnd, valueShape, accept, kind));
      if (!m || m.index !== start || !accept(m[0])) continue;
      if (found.some((f) => f.start === start)) continue;
      // "Account: 2023" is a number called so; "the account 2023 report" may not be, unless
      // the value looks like an identifier (letters and digits, or five digits or more).
      const explicit = EXPLICIT_CUE.test(cue[0]) || /[:#]/.test(gap);
      const idLike = digitCount(m[0]) >= 5 || (/\p{L}/u.test(m[0]) && /\d/.test(m[0]));
      const certainty = explicit ? confidence : idLike ? confidence - 0.15 : 0.4;
      found.push({ kind, text: m[0], start, end: start + m[0].length, confidence: certainty });
    }
    return found;
  }

  function findPassports(text) {
    return valuesAfterCues(text, PASSPORT_CUE, PASSPORT_VALUE, (v) => digitCount(v) >= 1, 'passport', 0.9);
  }

  function findRecordNumbers(text) {
    const accept = (v) => digitCount(v) >= 3 && v.length >= 4 && v.length <= 24;
    return valuesAfterCues(text, RECORD_CUE, RECORD_VALUE, accept, 'recordNumber', 0.85);
  }

  const api = { findPassports, findRecordNumbers };
  if (typeof module === 'object' && module.exports) module.exports = api;
  else (root.Sablemark = root.Sablemark || {}).labelledNumbers = api;
})(typeof globalThis !== 'undefined' ? globalThis : this);
