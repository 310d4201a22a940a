// Phone numbers by region, found and validated by the port of the reference phone-number library
// (metadata of every region: number lengths, area codes, mobile and fixed-line ranges).
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

  // [{kind, text, start, end, confidence}] in text order, overlaps resolved to the first region
  // that claims a place.
  function findPhones(text, regions = DEFAULT_REGIONS) {
    // The library's finder reads a list such as "020 7946 0958, 06 12 34 56 78" as one
    // candidate; commas and semicolons never stand inside a phone number, so they part them
    // (same length, so offsets hold).
    const parted = text.replace(/[,;]/g, '|');
    const found = [];
    for (const region of regions) {
      for (const m of phoneLib.findPhoneNumbersInText(parted, { defaultCountry: region, v2: true })) {
        const { startsAt: start, endsAt: end, number } = m;
        if (found.some((f) => start < f.end && f.start < end)) continue;
        const written = text.slice(start, end);
        if (!number.isValid() || DATE_SHAPE.test(written) || !edges.standsAlone(text, start, end)) continue;
        const digits = written.replace(/\D/g, '').length;
        if (digits < 7) continue;
        const international = /^(?:\+|00)/.test(written);
        // Written nationally, a number outside North America starts with its trunk 0: a bare
        // group of digits that merely fits some region's plan is not taken.
        if (!international && number.countryCallingCode !== '1' && !/^\(?0/.test(written)) continue;
        const cue = edges.cueBefore(text, start, PHONE_CUE, 12);
        // A number with its country code, or one that a label calls a phone number, is one for
        // certain; a national number in groups nearly so; a run of digits only with a label.
        const grouped = /[\s().\-/]/.test(written);
        if (!grouped && !international && !cue) continue;
        const confidence = international || cue ? 0.95 : 0.8;
        found.push({ kind: 'phone', text: written, start, end, confidence, region: number.country || region });
      }
    }
    return found.sort((a, b) => a.start - b.start);
  }

  const api = { findPhones, DEFAULT_REGIONS };
  if (node && typeof module === 'object' && module.exports) module.exports = api;
  else (root.Sablemark = root.Sablemark || {}).phones = api;
})(typeof globalThis !== 'undefined' ? globalThis : this);
