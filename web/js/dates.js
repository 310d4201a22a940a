// Finds calendar dates written in the usual numeric and English forms, and tells which of them
// can be real dates. Used to find dates of birth; a date alone is never a finding.
(function (root) {
  'use strict';

  // Month names and their usual abbreviations in English, German, French, Spanish and Dutch, by
  // month number.
  const MONTH_NAMES = [
    ['jan', 'january', 'januar', 'jänner', 'janvier', 'janv', 'enero', 'ene', 'januari'],
    ['feb', 'february', 'februar', 'février', 'févr', 'fevrier', 'febrero', 'februari'],
    ['mar', 'march', 'märz', 'maerz', 'mars', 'marzo', 'maart', 'mrz'],
    ['apr', 'april', 'avril', 'avr', 'abril', 'abr'],
    ['may', 'mai', 'mayo', 'mei'],
    ['jun', 'june', 'juni', 'juin', 'junio'],
    ['jul', 'july', 'juli', 'juillet', 'juil', 'julio'],
    ['aug', 'august', 'août', 'aout', 'agosto', 'ago', 'augustus'],
    ['sep', 'sept', 'september', 'septembre', 'septiembre', 'setiembre'],
    ['oct', 'october', 'oktober', 'okt', 'octobre', 'octubre'],
    ['nov', 'november', 'novembre', 'noviembre'],
    ['dec', 'december', 'dezember', 'dez', 'décembre', 'decembre', 'déc', 'diciembre', 'dic'],
  ];
  const MONTH_NUMBER = new Map(MONTH_NAMES.flatMap((names, i) => names.map((n) => [n, i + 1])));
  const MONTH_NAME = `(?:${[...MONTH_NUMBER.keys()].sort((a, b) => b.length - a.length).join('|')})`;
  const GAP = '[ \\t\\u00a0]+';
  const ORDINAL = '(?:st|nd|rd|th)?';
  const EDGE_BEFORE = '(?<![\\p{L}\\p{N}])';
  const EDGE_AFTER = '(?![\\p{L}\\p{N}]|[./-]\\p{N})';

  // Each form with the order in which its groups hold year, month and day.
  const FORMS = [
    { re: `(\\d{4})([-/.])(\\d{1,2})\\2(\\d{1,2})`, parts: (m) => [[m[1], m[3], m[4]]] },
    {
      // d/m/y or m/d/y: either reading will do
      re: `(\\d{1,2})([-/.])(\\d{1,2})\\2(\\d{4}|\\d{2})`,
      parts: (m) => [[m[4], m[3], m[1]], [m[4], m[1], m[3]]],
    },
    {
      // "28 February 1991", "12. März 1985", "3 de mayo de 1990"
      re: `(\\d{1,2})(?:${ORDINAL}|\\.)(?:${GAP}|-)(?:de${GAP})?(${MONTH_NAME})\\.?(?:,?${GAP}|-)(?:de${GAP})?(\\d{4})`,
      parts: (m) => [[m[3], monthNumber(m[2]), m[1]]],
    },
    {
      re: `(${MONTH_NAME})\\.?${GAP}(\\d{1,2})${ORDINAL},?${GAP}(\\d{4})`,
      parts: (m) => [[m[3], monthNumber(m[1]), m[2]]],
    },
  ].map((f) => ({ re: new RegExp(EDGE_BEFORE + f.re + EDGE_AFTER, 'giu'), parts: f.parts }));

  function monthNumber(name) {
    return String(MONTH_NUMBER.get(name.toLowerCase()) || 0);
  }

  function daysInMonth(year, month) {
    return new Date(Date.UTC(year, month, 0)).getUTCDate();
  }

  // A date that can have happened: month 1-12, a day of that month, a four-digit year from 1900
  // to `latestYear`. Two-digit years are taken as they come.
  function isPastDate(yearText, monthText, dayText, latestYear) {
    let year = Number(yearText);
    if (yearText.length === 2) year += 1900;
    else if (year < 1900 || year > latestYear) return false;
    const month = Number(monthText);
    const day = Number(dayText);
    return month >= 1 && month <= 12 && day >= 1 && day <= daysInMonth(year, month);
  }

  // All dates of `text` that can have happened, as {start, end, text}, in text order, without
  // overlaps (the first form that claims a place wins).
  function findDates(text, latestYear) {
    const found = [];
    for (const form of FORMS) {
      form.re.lastIndex = 0;
      for (const m of text.matchAll(form.re)) {
        const start = m.index;
        const end = start + m[0].length;
        if (found.some((d) => start < d.end && d.start < end)) continue;
        if (!form.parts(m).some(([y, mo, d]) => isPastDate(y, mo, d, latestYear))) continue;
        found.push({ start, end, text: m[0] });
      }
    }
    return found.sort((a, b) => a.start - b.start);
  }

  const api = { findDates, isPastDate };
  if (typeof module === 'object' && module.exports) module.exports = api;
  else (root.Sablemark = root.Sablemark || {}).dates = api;
})(typeof globalThis !== 'undefined' ? globalThis : this);
