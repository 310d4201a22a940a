// Detectors of sensitive content in the plain text of a page. Each finding carries its kind, the
// text exactly as it stands in the page's text, where it stands, and how certain the detector is
// (confidence, 0 to 1). Pure functions: no bridge, no DOM.
(function (root) {
  'use strict';

  const req = (file, name) => (typeof require === 'function' ? require(file) : root.Sablemark[name]);
  const checks = req('./checksums.js', 'checksums');
  const dates = req('./dates.js', 'dates');
  const edges = req('./text_edges.js', 'textEdges');
  const phones = req('./phones.js', 'phones');
  const labelled = req('./labelled_numbers.js', 'labelledNumbers');
  const addresses = req('./addresses.js', 'addresses');
  const people = req('./people_names.js', 'peopleNames');
  const breaks = req('./page_breaks.js', 'pageBreaks');

  // The kinds, in the order of precedence used where two findings overlap.
  const KINDS = ['email', 'iban', 'card', 'ssn', 'nino', 'nationalId', 'dob', 'phone', 'passport',
    'recordNumber', 'address', 'name'];
  const TERM = 'term';
  // Findings less certain than this are left out unless the caller asks for another threshold.
  const DEFAULT_MIN_CONFIDENCE = 0.5;

  const { NUM_BEFORE, NUM_AFTER, WORD_BEFORE, WORD_AFTER } = edges;

  function pattern(body, before = NUM_BEFORE, after = NUM_AFTER) {
    return new RegExp(before + body + after, 'gu');
  }

  function* matches(text, re) {
    re.lastIndex = 0;
    for (const m of text.matchAll(re)) yield m;
  }

  function hit(kind, m, confidence, text = m[0], start = m.index) {
    return { kind, text, start, end: start + text.length, confidence };
  }

  const EMAIL = pattern(
    "[\\p{L}\\p{N}!#$%&'*+/=?^_`{|}~-]+(?:\\.[\\p{L}\\p{N}!#$%&'*+/=?^_`{|}~-]+)*" +
      '@(?:[\\p{L}\\p{N}](?:[\\p{L}\\p{N}-]*[\\p{L}\\p{N}])?\\.)+\\p{L}{2,}',
    "(?<![\\p{L}\\p{N}.!#$%&'*+/=?^_`{|}~-])",
    '(?![\\p{L}\\p{N}@-])'
  );

  function findEmails(text) {
    return [...matches(text, EMAIL)].map((m) => hit('email', m, 0.99));
  }

  // Card numbers: 13 to 19 digits, alone or in groups of at least three digits joined by one
  // kind of separator, passing the Luhn check; a run of one repeated digit is no card. A number
  // whose issuer prefix and length are those of a card scheme is one for certain; another that
  // passes the check only with a card label before it.
  const CARD = pattern('\\d(?:[ \\-]?\\d){12,18}');
  const CARD_SCHEMES = [
    [/^4/, [13, 16, 19]],
    [/^(?:5[1-5]|222[1-9]|22[3-9]|2[3-6]|27[01]|2720)/, [16]],
    [/^3[47]/, [15]],
    [/^(?:6011|64[4-9]|65)/, [16, 17, 18, 19]],
    [/^35(?:2[89]|[3-8])/, [16, 17, 18, 19]],
    [/^3(?:0[0-5]|[689])/, [14, 15, 16, 17, 18, 19]],
    [/^62/, [16, 17, 18, 19]],
    [/^(?:50|5[6-9]|6)/, [12, 13, 14, 15, 16, 17, 18, 19]],
  ];
  const CARD_CUE = /(?<![\p{L}\p{N}])(?:card|credit|debit|visa|mastercard|amex|kreditkarte|karte|carte|tarjeta)(?:[ \t]+(?:no\.?|number|nr\.?|#))?[ \t]*:?/giu;

  function cardScheme(digits) {
    return CARD_SCHEMES.some(([prefix, lengths]) => prefix.test(digits) && lengths.includes(digits.length));
  }

  function findCards(text) {
    const found = [];
    for (const m of matches(text, CARD)) {
      const separators = new Set(m[0].replace(/\d/g, ''));
      if (separators.size > 1) continue;
      if (separators.size === 1 && m[0].split(/[ -]/).some((g) => g.length < 3)) continue;
      const digits = m[0].replace(/\D/g, '');
      if (/^(\d)\1+$/.test(digits) || !checks.luhnValid(digits)) continue;
      const cue = edges.cueBefore(text, m.index, CARD_CUE, 16);
      const confidence = cardScheme(digits) ? (separators.size || cue ? 0.97 : 0.9) : cue ? 0.85 : 0.4;
      found.push(hit('card', m, confidence));
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
        found.push(hit('iban', m, 0.99, text.slice(m.index, i)));
      }
    }
    return found;
  }

  // US social security numbers: three groups joined by one kind of separator, or nine digits in
  // a run after their label; the ranges never issued are left out.
  const SSN = pattern('(\\d{3})([ \\-]?)(\\d{2})\\2(\\d{4})');
  const SSN_CUE = /(?<![\p{L}\p{N}])(?:ssn|ss#|soc\.?[ \t]+sec\.?|social[ \t]+security(?:[ \t]+(?:no\.?|number|#))?|ssn[ \t]+no\.?|taxpayer[ \t]+id|tin)[ \t]*[:#]?/giu;

  function findSsns(text) {
    const found = [];
    for (const m of matches(text, SSN)) {
      if (!checks.ssnValid(m[1], m[3], m[4])) continue;
      const cue = edges.cueBefore(text, m.index, SSN_CUE, 24);
      const confidence = cue ? 0.99 : m[2] === '-' ? 0.9 : m[2] === ' ' ? 0.6 : 0;
      if (confidence) found.push(hit('ssn', m, confidence));
    }
    return found;
  }

  // UK National Insurance numbers: two prefix letters of the issued ones, six digits, suffix
  // A-D; spaces allowed between the pairs.
  const NINO = pattern(
    '([A-Z]{2}) ?(\\d{2}) ?(\\d{2}) ?(\\d{2}) ?([A-D])',
    WORD_BEFORE,
    WORD_AFTER
  );
  const NINO_CUE = /(?<![\p{L}\p{N}])(?:nino|ni[ \t]+(?:no\.?|number)|national[ \t]+insurance(?:[ \t]+(?:no\.?|number))?)[ \t]*:?/giu;

  function findNinos(text) {
    const found = [];
    for (const m of matches(text, NINO)) {
      if (!checks.ninoValid(m[1], m[5])) continue;
      found.push(hit('nino', m, edges.cueBefore(text, m.index, NINO_CUE, 24) ? 0.99 : 0.95));
    }
    return found;
  }

  // Other national identity numbers: Spanish DNI and NIE, French social security number,
  // Belgian national number. Each is checked by its own rule.
  const SPANISH_ID = pattern(
    '(?:([XYZ])[ \\-]?)?(\\d{7,8})[ \\-]?([A-Z])',
    WORD_BEFORE,
    WORD_AFTER
  );
  const NIR = pattern('([12]) ?(\\d{2}) ?(\\d{2}) ?(\\d{2}) ?(\\d{3}) ?(\\d{3}) ?(\\d{2})');
  const BELGIAN_ID = pattern('(\\d{2})\\.(\\d{2})\\.(\\d{2})-(\\d{3})\\.(\\d{2})');

  function findNationalIds(text) {
    const found = [];
    for (const m of matches(text, SPANISH_ID)) {
      const number = (m[1] || '') + m[2];
      if (number.length === 8 && checks.spanishIdValid(number, m[3])) {
        found.push(hit('nationalId', m, 0.95));
      }
    }
    for (const m of matches(text, NIR)) {
      if (checks.nirValid(m.slice(1, 7).join(''), m[7])) found.push(hit('nationalId', m, 0.97));
    }
    for (const m of matches(text, BELGIAN_ID)) {
      if (checks.belgianIdValid(m.slice(1, 5).join(''), m[5])) found.push(hit('nationalId', m, 0.97));
    }
    return found;
  }

  // Dates of birth: a date that follows a birth cue closely, with no sentence end between.
  const BIRTH_CUE = new RegExp(
    WORD_BEFORE +
      '(?:date[ \\t]+of[ \\t]+birth|birth[ \\t]*date|birthday|d\\.o\\.b\\.?|dob|born(?:[ \\t]+on)?|' +
      'geboren(?:[ \\t]+am)?|geb\\.|geburtsdatum|geburtstag|n[ée]e?[ \\t]+le|' +
      'date[ \\t]+de[ \\t]+naissance|fecha[ \\t]+de[ \\t]+nacimiento|nacid[oa](?:[ \\t]+el)?|' +
      'data[ \\t]+di[ \\t]+nascita|geboortedatum|geboren[ \\t]+op)' +
      '(?![\\p{L}\\p{N}])',
    'giu'
  );
  const CUE_REACH = 32;
  const COLUMN_REACH = 6000;

  function findBirthDates(text, latestYear, joined = false) {
    // A date may run over the lines of a narrow cell ("November" / "26," / "1964"): dates are
    // looked for with line breaks read as blanks, which keeps every offset.
    const all = dates.findDates(text.replace(/[\r\n]/g, ' '), latestYear)
      .map((d) => ({ ...d, text: text.slice(d.start, d.end) }));
    const found = new Map();
    for (const cue of matches(text, BIRTH_CUE)) {
      const cueEnd = cue.index + cue[0].length;
      const date = all.find((d) => d.start >= cueEnd);
      const between = date ? text.slice(cueEnd, date.start) : '';
      // The date follows on the cue's line, or alone below it (a form's field under its label).
      // Between them on the line: no sentence end, no number; in lines joined, no capitalised
      // word either (it may be the next cell's heading or name), leaving out what stands in
      // brackets ("(DD/MM/YYYY)").
      const apart = joined ? /[.;!?](?:\s|$)|\p{N}|\p{Lu}/u : /[.;!?](?:\s|$)|\p{N}/u;
      const near = /\n/.test(between)
        ? /^[\s:\-–]*$/.test(between)
        : !apart.test(between.replace(/\([^)]*\)/g, ''));
      if (date && date.start - cueEnd <= CUE_REACH && near) {
        found.set(date.start, { date, confidence: 0.95 });
      } else if (/^[ \t]*[:]?[ \t]*\r?\n/.test(text.slice(cueEnd))) {
        // A heading with no date after it may head a table's column of dates of birth.
        const below = all.filter((d) => d.start > cueEnd && d.start - cueEnd < COLUMN_REACH);
        if (below.length >= 3) for (const d of below) if (!found.has(d.start)) found.set(d.start, { date: d, confidence: 0.75 });
      }
    }
    return [...found.values()].map(({ date: d, confidence }) =>
      ({ kind: 'dob', text: d.text, start: d.start, end: d.end, confidence }));
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

  // A term is looked for as typed and in its composed and decomposed forms, so that "café"
  // typed with a combining accent finds the page's "café" and the other way round (the editor's
  // search takes them as the same).
  function findTerms(text, terms, wholeWord) {
    const found = [];
    for (const term of terms) {
      const taken = new Set();
      for (const form of new Set([term, term.normalize('NFC'), term.normalize('NFD')])) {
        const re = termRegExp(form, wholeWord);
        const folded = new RegExp(re.source, 'giu');
        for (const m of matches(text, folded)) {
          if (!m[0].length || taken.has(m.index)) continue;
          taken.add(m.index);
          found.push({ ...hit(TERM, m, 1), term });
        }
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
    ssn: findSsns,
    nino: findNinos,
    nationalId: findNationalIds,
    passport: labelled.findPassports,
    dob: (text, options) => findBirthDates(text, options.latestYear, options.joined),
    recordNumber: labelled.findRecordNumbers,
    phone: (text, options) => phones.findPhones(text, options.regions || undefined),
    address: addresses.findAddresses,
    name: people.findNames,
  };

  // A finding that runs over line breaks (an address) is searched for line by line: each line's
  // part is a finding of its own, of the same kind and confidence.
  function byLine(finding) {
    if (!/[\r\n]/.test(finding.text)) return [finding];
    const parts = [];
    const re = /[^\r\n]+/g;
    for (const m of finding.text.matchAll(re)) {
      const text = m[0].replace(/[\s,]+$/u, '').replace(/^\s+/u, '');
      if (!text) continue;
      const start = finding.start + m.index + m[0].indexOf(text);
      parts.push({ ...finding, text, start, end: start + text.length });
    }
    return parts;
  }

  // Pattern findings of one page's text, in text order, as certain as options.minConfidence
  // asks at least. Where two overlap, the kind earlier in KINDS wins, and within one kind the
  // more certain, then the longer. The user's terms are added as they are. Options: kinds, terms, wholeWord,
  // minConfidence, regions (of phone numbers written without a country code), latestYear.
  function detectText(text, options = {}) {
    const kinds = options.kinds || KINDS;
    const settings = {
      latestYear: options.latestYear || new Date().getFullYear(),
      regions: options.regions,
    };
    const least = options.minConfidence ?? DEFAULT_MIN_CONFIDENCE;
    const joined = joinLines(text);
    const tight = joinLines(text, '');
    const candidates = [];
    for (const kind of KINDS) {
      if (!kinds.includes(kind)) continue;
      const found = FINDERS[kind](text, settings);
      // Values that a narrow column or a table cell broke over lines are found in the text with
      // its line breaks read as blanks, and mapped back. (Names have their own rules for line
      // breaks.)
      if (kind !== 'name' && joined.text !== text) {
        for (const f of FINDERS[kind](joined.text, { ...settings, joined: true })) {
          const start = joined.source[f.start];
          const end = joined.source[f.end - 1] + 1;
          found.push({ ...f, start, end, text: text.slice(start, end), joined: true });
        }
      }
      // An e-mail address that a justified column broke without a hyphen is read with its
      // lines run together; where a line shows an address whole, that finding goes first.
      if (kind === 'email' && tight.text !== text) {
        for (const f of findEmails(tight.text)) {
          const start = tight.source[f.start];
          const end = tight.source[f.end - 1] + 1;
          if (/[\r\n]/.test(text.slice(start, end))) {
            found.push({ ...f, start, end, text: text.slice(start, end), joined: true, confidence: 0.9 });
          }
        }
      }
      for (const f of found) if (f.confidence >= least) candidates.push(f);
    }
    const rank = (f) => (f.kind === TERM ? KINDS.length : KINDS.indexOf(f.kind));
    // Within a kind the more certain goes first; of two as certain, what the text shows on its
    // lines goes before what joining them found, then the longer.
    candidates.sort((a, b) => rank(a) - rank(b) || b.confidence - a.confidence ||
      Boolean(a.joined) - Boolean(b.joined) || b.end - b.start - (a.end - a.start));
    const kept = [];
    for (const c of candidates) {
      if (!kept.some((k) => c.start < k.end && k.start < c.end)) kept.push(c);
    }
    const lines = kept.flatMap(({ joined, ...f }) => byLine(f));
    const terms = options.terms || [];
    lines.push(...findTerms(text, terms, Boolean(options.wholeWord)));
    return lines.sort((a, b) => a.start - b.start || rank(a) - rank(b));
  }

  // The text with each run of blanks that holds a line break made one blank (or `blank`), and for
  // each of its characters the offset it comes from.
  function joinLines(text, blank = ' ') {
    const source = [];
    let joinedText = '';
    let at = 0;
    for (const m of text.matchAll(/[ \t]*\r?\n[ \t\r\n]*/g)) {
      for (let i = at; i < m.index; i++) source.push(i);
      joinedText += text.slice(at, m.index) + blank;
      if (blank) source.push(m.index);
      at = m.index + m[0].length;
    }
    for (let i = at; i < text.length; i++) source.push(i);
    joinedText += text.slice(at);
    return { text: joinedText, source };
  }

  // Findings of a document, one per kind, text and page: {kind, text, page, occurrences,
  // confidence}, the confidence the highest of its occurrences. A
  // term found in several spellings on one page is one finding, with the term as its text to
  // search for and the first spelling as what the page shows. A value or a term that a page break
  // parts is found in the end of its page read on into the start of the next, and each page's
  // part is a finding on that page (a term's part with `wholeWord` when it stands as whole words).
  function detectDocument(pages, options = {}) {
    const perPage = pages.map((text) => detectText(text, options));
    for (const f of breaks.acrossBreaks(pages, perPage, (text) => detectText(text, options))) {
      perPage[f.page].push(f);
    }
    const findings = [];
    const byKey = new Map();
    perPage.forEach((found, page) => {
      for (const f of found) {
        const key = `${page}\u0000${f.kind}\u0000${f.kind === TERM ? f.term.toLowerCase() : f.text}\u0000${Boolean(f.wholeWord)}`;
        const known = byKey.get(key);
        if (known) {
          known.occurrences++;
          known.confidence = Math.max(known.confidence, f.confidence);
          continue;
        }
        const finding = { kind: f.kind, text: f.text, page, occurrences: 1, confidence: f.confidence };
        if (f.kind === TERM) finding.term = f.term;
        if (f.wholeWord) finding.wholeWord = true;
        byKey.set(key, finding);
        findings.push(finding);
      }
    });
    return findings;
  }

  const api = { KINDS, TERM, DEFAULT_MIN_CONFIDENCE, detectText, detectDocument, parseTerms, findTerms };
  if (typeof module === 'object' && module.exports) module.exports = api;
  else (root.Sablemark = root.Sablemark || {}).detectors = api;
})(typeof globalThis !== 'undefined' ? globalThis : this);
