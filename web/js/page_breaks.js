// Values that a page break parts: the end of one page read on into the start of the next, with
// the page's furniture between them (page numbers, running heads and feet) left out. Pure
// functions: no bridge, no DOM.
(function (root) {
  'use strict';

  // Lines of each side of a break that are read together: enough for a value over three lines
  // of a table or an address block.
  const EDGE_LINES = 4;
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
    const tail = before.slice(-EDGE_LINES);
    const head = after.slice(0, EDGE_LINES);
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

  // Findings that only the two pages read together hold: each as found in the joined text,
  // mapped to the one page its text stands on ({...finding, page, start, end}, offsets in that
  // page's text), and left out where that page's own findings (`known[page]`) cover any of its
  // characters. `detect(text)` gives the findings of a text, each on one line.
  function acrossBreaks(pages, known, detect) {
    const found = [];
    for (let p = 0; p + 1 < pages.length; p++) {
      const joined = breakText(pages, p);
      if (!joined) continue;
      for (const f of detect(joined.text)) {
        const first = joined.source[f.start];
        const last = joined.source[f.end - 1];
        if (!first || !last || first.page !== last.page) continue;
        const { page } = first;
        const start = first.at;
        const end = last.at + 1;
        const overlaps = (k) => k.start < end && start < k.end;
        if ((known[page] || []).some(overlaps) || found.some((k) => k.page === page && overlaps(k))) continue;
        found.push({ ...f, page, start, end, text: pages[page].slice(start, end) });
      }
    }
    return found;
  }

  const api = { acrossBreaks, breakText };
  if (typeof module === 'object' && module.exports) module.exports = api;
  else (root.Sablemark = root.Sablemark || {}).pageBreaks = api;
})(typeof globalThis !== 'undefined' ? globalThis : this);
