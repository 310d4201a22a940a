// What the detectors share about where a value may start and end in a page's text, and the cues
// (labels) that may stand before it. Pure functions over plain text.
(function (root) {
  'use strict';

  // A number must stand alone: no letter or digit right before or after it, and no further
  // group of digits joined to it by a separator.
  const NUM_BEFORE = '(?<![\\p{L}\\p{N}+]|\\p{N}[ .\\-/])';
  const NUM_AFTER = '(?![\\p{L}\\p{N}]|[ .\\-/]\\p{N})';
  const WORD_BEFORE = '(?<![\\p{L}\\p{N}])';
  const WORD_AFTER = '(?![\\p{L}\\p{N}])';

  function standsAlone(text, start, end) {
    const before = text.slice(Math.max(0, start - 2), start);
    const after = text.slice(end, end + 2);
    return !/[\p{L}\p{N}+]$|\p{N}[ .\-/]$/u.test(before) && !/^[\p{L}\p{N}]|^[ .\-/]\p{N}/u.test(after);
  }

  // The cue that ends closest before `start`, within `reach` characters and on the same line or
  // the line before, with no sentence end between; null when there is none. `cues` is a global
  // regular expression.
  function cueBefore(text, start, cues, reach = 40) {
    const from = Math.max(0, start - reach - 40);
    const window = text.slice(from, start);
    let best = null;
    cues.lastIndex = 0;
    for (const m of window.matchAll(cues)) {
      const cueEnd = from + m.index + m[0].length;
      if (start - cueEnd > reach) continue;
      const between = text.slice(cueEnd, start);
      if (/[.;!?](?:\s|$)/u.test(between.replace(/^\s*(?:no|nr|num|ref)\.\s*/iu, ''))) continue;
      if ((between.match(/\n/g) || []).length > 1) continue;
      best = { text: m[0], start: from + m.index, end: cueEnd, between };
    }
    return best;
  }

  const api = { NUM_BEFORE, NUM_AFTER, WORD_BEFORE, WORD_AFTER, standsAlone, cueBefore };
  if (typeof module === 'object' && module.exports) module.exports = api;
  else (root.Sablemark = root.Sablemark || {}).textEdges = api;
})(typeof globalThis !== 'undefined' ? globalThis : this);
