// Phone numbers by region, validated by the port of the reference phone-number library (metadata
// of every region: number lengths, area codes, mobile and fixed-line ranges). Candidates are runs
// of digit groups; each is tried whole and then by its shorter runs of groups, so that a year or a
// house number before a phone number does not hide it.
(function (root) {
  'use strict';

  const node = typeof require === 'function';
  const phoneLib = node ? require('libphonenumber-js/max') : root.libphonenumber;
  const edges = node ? require('./text_edges.js') : root.Sablemark.textEdges;

  // Regions whose national numbers (written without a country code) are looked for unless the
  // caller names others. International numbers are found whatever the region.
  const DEFAULT_REGIONS = ['US', 'GB', 'DE', 'FR', 'ES', 'IT', 'NL', 'BE', 'IE', 'CA', 'AU'];
  const PHONE_CUE = /(?<![\p{L}\p{N}])(?:tel(?:ephone)?|phone|mobile|cell|fax|ph|mob|telefon|t[ée]l[ée]phone|portable|tel[ée]fono|móvil|handy)\.?\s*(?:no\.?|number|nr\.?|#)?\s*[:.]?/giu;
  const DATE_SHAPE = /^\d{1,4}([./-])\d{1,2}\1\d{1,4}$/;
  // Digit groups joined by one blank, dash, dot or slash (a line break counts as a blank), an
  // optional + or 00 and area code in brackets.
  const CANDIDATE = /(?<![\p{L}\p{N}+])(?:\+|\(\+?)?\d[\d)]*(?:(?:[ \t.\-/]|\r?\n| ?\()\d[\d)]*){0,7}/gu;
  const MIN_DIGITS = 7;
  const MAX_DIGITS = 17;

  function digitsOf(text) {
    return text.replace(/\D/g, '');
  }

  // The number `written` stands for, tried as international and then in each region; null when
  // no region's plan holds it. Written nationally, a number must have all the digits of its
  // region's national form (the trunk 0 where the region dials one). Parsing is slow next to
  // the rest, and documents repeat their numbers: answers are kept.
  // A + (or 00) and a country's calling code mark a phone number even when its digits are
  // outside that country's plan (a fictional or a newly opened range): taken with less confidence.
  const CALLING_CODES = new Set(phoneLib.getCountries().map((c) => phoneLib.getCountryCallingCode(c)));

  function callingCodeOf(written) {
    const digits = digitsOf(written).replace(/^00/, '');
    if (digits.length < 8 || digits.length > 15) return null;
    return [1, 2, 3].map((n) => digits.slice(0, n)).find((code) => CALLING_CODES.has(code)) || null;
  }

  const parsed = new Map();
  const PARSED_KEPT = 5000;

  function parse(written, regions) {
    const key = `${regions.join(',')}\u0000${written}`;
    if (!parsed.has(key)) {
      if (parsed.size >= PARSED_KEPT) parsed.clear();
      parsed.set(key, parseOnce(written, regions));
    }
    return parsed.get(key);
  }

  function parseOnce(written, regions) {
    const international = /^(?:\(?\+|00)/.test(written);
    if (international) {
      const number = phoneLib.parsePhoneNumberFromString(written.replace(/^00/, '+'));
      if (number && number.isValid()) return number;
      return callingCodeOf(written) ? { country: undefined, unlisted: true } : null;
    }
    for (const region of regions) {
      const number = phoneLib.parsePhoneNumberFromString(written, region);
      if (number && number.isValid() && digitsOf(written) === digitsOf(number.formatNational())) return number;
    }
    return null;
  }

  // The groups of a candidate with their offsets: [{start, end}] over the candidate's text.
  function groups(candidate) {
    const found = [];
    for (const m of candidate.matchAll(/(?:\+|\(\+?)?\d[\d)]*/g)) found.push({ start: m.index, end: m.index + m[0].length });
    return found;
  }

  // The longest run of groups within the candidate that is a phone number, earliest first. A run
  // shorter than the candidate is cut from it at line breaks only: digit groups joined on one line
  // are one number or none.
  function bestRun(candidate, regions) {
    const parts = groups(candidate);
    const cut = (from, to) => candidate.slice(from, to).includes('\n');
    for (let size = parts.length; size >= 1; size--) {
      for (let first = 0; first + size <= parts.length; first++) {
        const last = first + size - 1;
        if (first > 0 && !cut(parts[first - 1].end, parts[first].start)) continue;
        if (last < parts.length - 1 && !cut(parts[last].end, parts[last + 1].start)) continue;
        const start = parts[first].start;
        const written = candidate.slice(start, parts[last].end);
        const count = digitsOf(written).length;
        if (count < MIN_DIGITS || count > MAX_DIGITS || DATE_SHAPE.test(written)) continue;
        const number = parse(written.replace(/\r?\n/g, ' '), regions);
        if (number) return { start, written, number };
      }
    }
    return null;
  }

  // [{kind, text, start, end, confidence, region}] in text order.
  function findPhones(text, regions = DEFAULT_REGIONS) {
    const found = [];
    CANDIDATE.lastIndex = 0;
    for (const m of text.matchAll(CANDIDATE)) {
      if (digitsOf(m[0]).length < MIN_DIGITS) continue;
      const run = bestRun(m[0], regions);
      if (!run) continue;
      const { written, number } = run;
      const start = m.index + run.start;
      const end = start + written.length;
      if (!edges.standsAlone(text, start, end) && written.length === m[0].length) continue;
      const international = /^(?:\(?\+|00)/.test(written);
      const cue = edges.cueBefore(text, start, PHONE_CUE, 12);
      const grouped = /[\s().\-/]/.test(written);
      // A number with its country code, or one that a label calls a phone number, is one for
      // certain; a national number in groups nearly so; a run of digits only with a label.
      if (!grouped && !international && !cue) continue;
      const confidence = number.unlisted ? 0.6 : international || cue ? 0.95 : 0.8;
      found.push({ kind: 'phone', text: written, start, end, confidence, region: number.country });
    }
    return found;
  }

  const api = { findPhones, DEFAULT_REGIONS };
  if (typeof module === 'object' && module.exports) module.exports = api;
  else (root.Sablemark = root.Sablemark || {}).phones = api;
})(typeof globalThis !== 'undefined' ? globalThis : this);
