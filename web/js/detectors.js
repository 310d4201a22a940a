// Detectors of sensitive content in the plain text of a page. Each finding carries its kind, the
// text exactly as it stands in the page's text, and where it stands. Pure functions: no bridge,
// no DOM.
(function (root) {
  'use strict';

  const checks =
    typeof require === 'function' ? require('./checksums.js') : root.Sablemark.checksums;
  const dates = typeof require === 'function' ? require('./dates.js') : root.Sablemark.dates;

  // The kinds, in the order of precedence used where two findings overlap.
  const KINDS = ['email', 'iban', 'card', 'nationalId', 'dob', 'phone'];
  const TERM = 'term';

  // A number must stand alone: no letter or digit right before or after it, and no further
  // group of digits joined to it by a separator.
  const NUM_BEFORE = '(?<![\\p{L}\\p{N}+]|\\p{N}[ .\\-/])';
  const NUM_AFTER = '(?![\\p{L}\\p{N}]|[ .\\-/]\\p{N})';
  const WORD_BEFORE = '(?<![\\p{L}\\p{N}])';
  const WORD_AFTER = '(?![\\p{L}\\p{N}])';

  function pattern(body, before = NUM_BEFORE, after = NUM_AFTER) {
    return new RegExp(before + body + after, 'gu');
  }

  function* matches(text, re) {
    re.lastIndex = 0;
    for (const m of text.matchAll(re)) yield m;
  }

  function hit(kind, m, text = m[0], start = m.index) {
    return { kind, text, start, end: start + text.length };
  }

  const EMAIL = pattern(
    "[\\p{L}\\p{N}!#$%&'*+/=?^_`{|}~-]+(?:\\.[\\p{L}\\p{N}!#$%&'*+/=?^_`{|}~-]+)*" +
      '@(?:[\\p{L}\\p{N}](?:[\\p{L}\\p{N}-]*[\\p{L}\\p{N}])?\\.)+\\p{L}{2,}',
    "(?<![\\p{L}\\p{N}.!#$%&'*+/=?^_`{|}~-])",
    '(?![\\p{L}\\p{N}@-])'
  );

  function findEmails(text) {
    return [...matches(text, EMAIL)].map((m) => hit('email', m));
  }

  // Phone numbers: international (+ or 00 and a country code), North American (area code and
  // exchange start with 2-9; an area code in brackets marks a phone number whatever the
  // exchange), and national numbers with a trunk 0 written in groups.
  const PHONE_INTERNATIONAL = pattern(
    '(?:\\+|00)[1-9]\\d{0,2}(?:[ .\\-]?(?:\\(\\d{1,4}\\)|\\d{1,5})){1,6}'
  );
  const PHONE_NORTH_AMERICA = pattern(
    '(?:\\( ?[2-9]\\d{2} ?\\)[ .\\-]?\\d{3}|[2-9]\\d{2}[ .\\-][2-9]\\d{2})[ .\\-]\\d{4}'
  );
  const PHONE_NATIONAL = pattern('0\\d{1,4}(?:[ /.\\-]\\d{2,8})(?:[ .\\-]\\d{2,4}){0,3}');
  const DATE_SHAPE = /^\d{1,4}([./-])\d{1,2}\1\d{1,4}$/;

  function digitCount(text) {
    return text.replace(/\D/g, '').length;
  }

  function findPhones(text) {
    const found = [];
    for (const m of matches(text, PHONE_INTERNATIONAL)) {
      const n = digitCount(m[0]);
      if (n >= 8 && n <= 15 + (m[0].startsWith('00') ? 2 : 0)) found.push(hit('phone', m));
    }
    for (const m of matches(text, PHONE_NORTH_AMERICA)) found.push(hit('phone', m));
    for (const m of matches(text, PHONE_NATIONAL)) {
      const n = digitCount(m[0]);
      if (n >= 9 && n <= 12 && !DATE_SHAPE.test(m[0])) found.push(hit('phone', m));
    }
    return found;
  }

  // Card numbers: 13 to 19 digits, alone or in groups of at least three digits joined by one
  // kind of separator, passing the Luhn check; a run of one repeated digit is no card.
  const CARD = pattern('\\d(?:[ \\-]?\\d){12,18}');

  function findCards(text) {
    const found = [];
    for (const m of matches(text, CARD)) {
      const separators = new Set(m[0].replace(/\d/g, ''));
      if (separators.size > 1) continue;
      if (separators.size === 1 && m[0].split(/[ -]/).some((g) => g.length < 3)) continue;
      const digits = m[0].replace(/\D/g, '');
      if (/^(\d)\1+$/.test(digits) || !checks.luhnValid(digits)) continue;
      found.push(hit('card', m));
    }
    return found;
  }

  // IBANs: country code and check digits, then exactly as many letters and digits as the
  // country's IBAN has, single spaces allowed between them; mod-97 checked.
  const IBAN_START = new RegExp(WORD_BEFORE + '[A-Z]{2}\\d{2}', 'gu');

  function findIbans(text) {
    const found = [];
    for (const m of matches(text, IBAN_START)) {
      const length = checks.ibanLength(m[0].slice(0, 2));
      if (!length) continue;
      let compact = m[0];
      let i = m.index + 4;
      while (compact.length < length && i < text.length) {
        if (text[i] === ' ' && /[A-Z0-9]/.test(text[i + 1] || '')) i++;
        if (!/[A-Z0-9]/.test(text[i])) break;
        compact += text[i++];
      }
      if (compact.length !== length || /[\p{L}\p{N}]/u.test(text[i] || '')) continue;
      if (checks.ibanValid(compact)) {
        found.push(hit('iban', m, text.slice(m.index, i)));
      }
    }
    return found;
  }

  // National identity numbers: US SSN, UK National Insurance number, Spanish DNI and NIE,
  // French social security number, Belgian national number. Each is checked by its own rule.
  const SSN = pattern('(\\d{3})([ \\-])(\\d{2})\\2(\\d{4})');
  const NINO = pattern(
    '([A-Z]{2}) ?(\\d{2}) ?(\\d{2}) ?(\\d{2}) ?([A-D])',
    WORD_BEFORE,
    WORD_AFTER
  );
  const SPANISH_ID = pattern(
    '(?:([XYZ])[ \\-]?)?(\\d{7,8})[ \\-]?([A-Z])',
    WORD_BEFORE,
    WORD_AFTER
  );
  const NIR = pattern('([12]) ?(\\d{2}) ?(\\d{2}) ?(\\d{2}) ?(\\d{3}) ?(\\d{3}) ?(\\d{2})');
  const BELGIAN_ID = pattern('(\\d{2})\\.(\\d{2})\\.(\\d{2})-(\\d{3})\\.(\\d{2})');

  function findNationalIds(text) {
    const found = [];
    for (const m of matches(text, SSN)) {
      if (checks.ssnValid(m[1], m[3], m[4])) found.push(hit('nationalId', m));
    }
    for (const m of matches(text, NINO)) {
      if (checks.ninoValid(m[1], m[5])) found.push(hit('nationalId', m));
    }
    for (const m of matches(text, SPANISH_ID)) {
      const number = (m[1] || '') + m[2];
      if (number.length === 8 && checks.spanishIdValid(number, m[3])) {
        found.push(hit('nationalId', m));
      }
    }
    for (const m of matches(text, NIR)) {
      if (checks.nirValid(m.slice(1, 7).join(''), m[7])) found.push(hit('nationalId', m));
    }
    for (const m of matches(text, BELGIAN_ID)) {
      if (checks.belgianIdValid(m.slice(1, 5).join(''), m[5])) found.push(hit('nationalId', m));
    }
    return found;
  }

  // Dates of birth: a date that follows a birth cue closely, with no sentence end between.
  const BIRTH_CUE = new RegExp(
    WORD_BEFORE +
      '(?:date[ \\t]+of[ \\t]+birth|birth[ \\t]*date|birthday|d\\.o\\.b\\.?|dob|born(?:[ \\t]+on)?|' +
      'geboren(?:[ \\t]+am)?|geb\\.|n[ée]e?[ \\t]+le|fecha[ \\t]+de[ \\t]+nacimiento|' +
      'data[ \\t]+di[ \\t]+nascita|geboortedatum)' +
      '(?![\\p{L}\\p{N}])',
    'giu'
  );
  const CUE_REACH = 32;

  function findBirthDates(text, latestYear) {
    const all = dates.findDates(text, latestYear);
    const found = [];
    for (const cue of matches(text, BIRTH_CUE)) {
      const cueEnd = cue.index + cue[0].length;
      const date = all.find((d) => d.start >= cueEnd);
      if (!date || date.start - cueEnd > CUE_REACH) continue;
      if (/[.;!?](?:\s|$)|\p{N}/u.test(text.slice(cueEnd, date.start))) continue;
      if (!found.includes(date)) found.push(date);
    }
    return found.map((d) => ({ kind: 'dob', text: d.text, start: d.start, end: d.end }));
  }

  // The user's terms, case-insensitive; whitespace in a term matches any run of whitespace.
  function termRegExp(term, wholeWord) {
    const body = term
      .trim()
      .split(/\s+/)
      // The characters that mean something in a pattern; "-" does not outside a class, and the
      // Unicode mode refuses an escape that means nothing.
      .map((w) => w.replace(/[.*+?^${}()|[\]\\\/]/g, '\\$&'))
      .join('\\s+');
    return wholeWord ? pattern(body, WORD_BEFORE, WORD_AFTER) : new RegExp(body, 'gu');
  }

  function findTerms(text, terms, wholeWord) {
    const found = [];
    for (const term of terms) {
      const re = termRegExp(term, wholeWord);
      const folded = new RegExp(re.source, 'giu');
      for (const m of matches(text, folded)) {
        if (m[0].length) found.push({ ...hit(TERM, m), term });
      }
    }
    return found;
  }

  // Splits what the user typed into distinct terms: commas, semicolons or line breaks part
  // them; case does not make two terms different.
  function parseTerms(input) {
    const seen = new Set();
    const terms = [];
    for (const raw of String(input || '').split(/[,;\r\n]+/)) {
      const term = raw.trim().replace(/\s+/g, ' ');
      if (!term || seen.has(term.toLowerCase())) continue;
      seen.add(term.toLowerCase());
      terms.push(term);
    }
    return terms;
  }

  const FINDERS = {
    email: findEmails,
    iban: findIbans,
    card: findCards,
    nationalId: findNationalIds,
    dob: findBirthDates,
    phone: findPhones,
  };

  // Pattern findings of one page's text, in text order. Where two overlap, the kind earlier in
  // KINDS wins, and within one kind the longer. The user's terms are added as they are.
  function detectText(text, options = {}) {
    const kinds = options.kinds || KINDS;
    const latestYear = options.latestYear || new Date().getFullYear();
    const candidates = [];
    for (const kind of KINDS) {
      if (kinds.includes(kind)) candidates.push(...FINDERS[kind](text, latestYear));
    }
    const rank = (f) => (f.kind === TERM ? KINDS.length : KINDS.indexOf(f.kind));
    candidates.sort((a, b) => rank(a) - rank(b) || b.end - b.start - (a.end - a.start));
    const kept = [];
    for (const c of candidates) {
      if (!kept.some((k) => c.start < k.end && k.start < c.end)) kept.push(c);
    }
    const terms = options.terms || [];
    kept.push(...findTerms(text, terms, Boolean(options.wholeWord)));
    return kept.sort((a, b) => a.start - b.start || rank(a) - rank(b));
  }

  // Findings of a document, one per kind, text and page: {kind, text, page, occurrences}. A
  // term found in several spellings on one page is one finding, with the term as its text to
  // search for and the first spelling as what the page shows.
  function detectDocument(pages, options = {}) {
    const findings = [];
    const byKey = new Map();
    pages.forEach((text, page) => {
      for (const f of detectText(text, options)) {
        const key = `${page}\u0000${f.kind}\u0000${f.kind === TERM ? f.term.toLowerCase() : f.text}`;
        const known = byKey.get(key);
        if (known) {
          known.occurrences++;
          continue;
        }
        const finding = { kind: f.kind, text: f.text, page, occurrences: 1 };
        if (f.kind === TERM) finding.term = f.term;
        byKey.set(key, finding);
        findings.push(finding);
      }
    });
    return findings;
  }

  const api = { KINDS, TERM, detectText, detectDocument, parseTerms, findTerms };
  if (typeof module === 'object' && module.exports) module.exports = api;
  else (root.Sablemark = root.Sablemark || {}).detectors = api;
})(typeof globalThis !== 'undefined' ? globalThis : this);
