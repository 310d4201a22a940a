// Values that a page break parts: the end of one page read on into the start of the next, with
// the page's furniture between them (page numbers, running heads and feet) left out. Pure
// functions: no bridge, no DOM.
(function (root) {
  'use strict';

  // Lines of each side of a break that are read together: enough for a value over three lines
  // of a table or an address block.
  const EDGE_LINES = 4;
  // Characters of each side at most: a page of one long line is read near its edge only, so that
  // a break costs the same whatever the page holds.
  const EDGE_CHARS = 2000;
  // Lines of furniture passed over at a page's end or start.
  const MAX_FURNITURE = 3;
  const PAGE_NUMBER = /^[\s\-–—]*(?:(?:page|seite|p[áa]gina|pagina|pag\.|p\.|s\.)\s*)?\d{1,5}(?:\s*(?:of|\/|von|de|sur|di|van)\s*\d{1,5})?[\s\-–—]*$/iu;

  // The lines of a page's text with where each starts.
  function linesOf(text) {
    const lines = [];
    for (const m of text.matchAll(/[^\r\n]+/g)) lines.push({ text: m[0], start: m.index, end: m.index + m[0].length });
    return lines.filter((l) => l.text.trim());
  }

  // A running head or foot repeats on the pages around it, its page number aside.
  const shape = (line) => (line ? line.text.trim().replace(/\d+/g, '#').toLowerCase() : null);

  function isFurniture(line, others) {
    return PAGE_NUMBER.test(line.text) || others.some((o) => o !== null && o === shape(line));
  }

  // The lines nearest a break, nearest first, up to EDGE_CHARS characters: the last one kept cut
  // to its part nearest the break (`atEnd`: the lines end a page), at a blank where there is one.
  function edge(lines, atEnd) {
    const kept = [];
    let left = EDGE_CHARS;
    for (const line of lines) {
      if (left <= 0) break;
      if (line.text.length <= left) {
        kept.push(line);
        left -= line.text.length;
        continue;
      }
      let cut = atEnd ? line.text.length - left : left;
      const blank = atEnd ? line.text.indexOf(' ', cut) : line.text.lastIndexOf(' ', cut);
      if (blank > 0 && blank < line.text.length - 1) cut = blank + (atEnd ? 1 : 0);
      const text = atEnd ? line.text.slice(cut) : line.text.slice(0, cut);
      kept.push({ text, start: atEnd ? line.start + cut : line.start, end: atEnd ? line.end : line.start + cut });
      break;
    }
    return kept;
  }

  // Findings by page, sorted, to tell at once whether a range overlaps any of them.
  function overlapIndex(findings) {
    const sorted = [...(findings || [])].sort((a, b) => a.start - b.start);
    const reach = [];
    for (const f of sorted) reach.push(Math.max(f.end, reach.length ? reach[reach.length - 1] : -Infinity));
    return (start, end) => {
      let lo = 0;
      let hi = sorted.length; // the first finding that starts at `end` or later
      while (lo < hi) {
        const mid = (lo + hi) >> 1;
        if (sorted[mid].start < end) lo = mid + 1;
        else hi = mid;
      }
      return lo > 0 && reach[lo - 1] > start;
    };
  }

  // The end of page `p` and the start of page `p + 1` as one text, each character mapped back to
  // its page and offset; null when either side has no text.
  function breakText(pages, p) {
    const before = linesOf(pages[p]);
    const after = linesOf(pages[p + 1]);
    const lastOf = (i) => (pages[i] === undefined ? null : shape(linesOf(pages[i]).at(-1)));
    const firstOf = (i) => (pages[i] === undefined ? null : shape(linesOf(pages[i])[0]));
    const feet = [lastOf(p - 1), lastOf(p + 1)];
    const heads = [firstOf(p), firstOf(p + 2)];
    for (let n = 0; n < MAX_FURNITURE && before.length && isFurniture(before.at(-1), feet); n++) before.pop();
    for (let n = 0; n < MAX_FURNITURE && after.length && isFurniture(after[0], heads); n++) after.shift();
    if (!before.length || !after.length) return null;
    const tail = edge(before.slice(-EDGE_LINES).reverse(), true).reverse();
    const head = edge(after.slice(0, EDGE_LINES), false);
    let text = '';
    const source = [];
    const add = (page, lines) => {
      for (const line of lines) {
        if (text) {
          text += '\r\n';
          source.push(null, null);
        }
        text += line.text;
        for (let i = 0; i < line.text.length; i++) source.push({ page, at: line.start + i });
      }
    };
    add(p, tail);
    const boundary = text.length;
    add(p + 1, head);
    return { text, source, boundary };
  }

  const WORD_CHAR = /[\p{L}\p{M}\p{N}]/u;

  // The parts of a finding of the joined text, one per page it stands on: {page, start, end}
  // (offsets in that page's text), blanks at their edges left out.
  function partsOf(f, joined, pages) {
    const parts = [];
    for (let i = f.start; i < f.end; i++) {
      const at = joined.source[i];
      if (!at || /\s/u.test(pages[at.page][at.at])) continue;
      const part = parts.at(-1);
      if (part && part.page === at.page) part.end = at.at + 1;
      else parts.push({ page: at.page, start: at.at, end: at.at + 1 });
    }
    return parts;
  }

  // Findings that only the two pages read together hold: each as found in the joined text,
  // mapped to the one page its text stands on ({...finding, page, start, end}, offsets in that
  // page's text), and left out where that page's own findings (`known[page]`) cover any of its
  // characters. `detect(text)` gives the findings of a text, each on one line, and the user's
  // terms whole: a term whose words end one page and start the next is a finding on each page,
  // whose `term` is the part its page shows, `wholeWord` when no letter or digit touches it there.
  function acrossBreaks(pages, known, detect) {
    const found = [];
    const knownOverlaps = new Map();
    const added = new Map(); // page -> findings added on it, few
    const add = (f, { page, start, end }) => {
      if (!knownOverlaps.has(page)) knownOverlaps.set(page, overlapIndex(known[page]));
      const overlaps = (k) => k.start < end && start < k.end;
      if (knownOverlaps.get(page)(start, end) || (added.get(page) || []).some(overlaps)) return;
      const finding = { ...f, page, start, end, text: pages[page].slice(start, end) };
      found.push(finding);
      if (!added.has(page)) added.set(page, []);
      added.get(page).push(finding);
    };
    for (let p = 0; p + 1 < pages.length; p++) {
      const joined = breakText(pages, p);
      if (!joined) continue;
      for (const f of detect(joined.text)) {
        const parts = partsOf(f, joined, pages);
        if (parts.length === 1) {
          add(f, parts[0]);
        } else if (f.term !== undefined && parts.length === 2) {
          for (const part of parts) {
            const text = pages[part.page];
            const term = text.slice(part.start, part.end);
            const wholeWord = !WORD_CHAR.test(text[part.start - 1] || '') && !WORD_CHAR.test(text[part.end] || '');
            add({ ...f, term, wholeWord }, part);
          }
        }
      }
    }
    return found;
  }

  const api = { acrossBreaks, breakText };
  if (typeof module === 'object' && module.exports) module.exports = api;
  else (root.Sablemark = root.Sablemark || {}).pageBreaks = api;
})(typeof globalThis !== 'undefined' ? globalThis : this);
