// Pages without extractable text: scans and image-only pages, which no search reads until the
// editor's text recognition gives them a text layer. A scan counts and flags them, so that
// nothing found on such a page is not taken for nothing there.
(function (root) {
  'use strict';

  // Indices of the pages whose text (as getFileTexts gives it) is missing, empty or only
  // whitespace, in page order.
  function pagesWithoutText(texts) {
    const pages = [];
    (Array.isArray(texts) ? texts : []).forEach((text, page) => {
      if (typeof text !== 'string' || text.trim() === '') pages.push(page);
    });
    return pages;
  }

  // Page numbers as a reader counts them: "3", "3 and 5", "3, 5 and 9"; long lists shortened.
  function pageList(pages, shown = 10) {
    const numbers = pages.slice(0, shown).map((page) => String(page + 1));
    if (pages.length > shown) return `${numbers.join(', ')} and ${pages.length - shown} more`;
    if (numbers.length < 2) return numbers.join('');
    return `${numbers.slice(0, -1).join(', ')} and ${numbers[numbers.length - 1]}`;
  }

  // The pane's notice for those pages, or null when every page has text.
  function noticeFor(pages) {
    if (!pages.length) return null;
    const which = pages.length === 1 ? `Page ${pageList(pages)} has` : `${pages.length} pages (${pageList(pages)}) have`;
    return `${which} no text to search: scans or image-only pages are not searched until ` +
      'the editor\'s text recognition has read them.';
  }

  const api = { pagesWithoutText, pageList, noticeFor };
  if (typeof module === 'object' && module.exports) module.exports = api;
  else (root.Sablemark = root.Sablemark || {}).textlessPages = api;
})(typeof globalThis !== 'undefined' ? globalThis : this);
