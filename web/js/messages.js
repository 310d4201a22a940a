// The editor answers a failed command with a number only; these are the page's words for the
// numbers and for the steps that send the commands.
(function (root) {
  'use strict';

  const CODES = {
    100001: 'the request was not understood',
    100004: 'the document is not identified',
    100008: 'there was no text to look for',
    100009: 'the page range is not valid',
    100010: 'the search results are not identified',
    100011: 'the match is not identified',
    100013: 'the request named no annotation type',
    100014: 'the redaction marks are not identified',
    100015: 'the annotation type is unknown',
    100021: 'the page is not identified',
    200002: 'the account has no sign-in token; sign in again',
    200003: "the account's details could not be read",
    200004: 'the account server is not known',
    300001: 'no document is open',
    300002: 'the editor could not save the document',
    300009: 'the document has no view in the editor',
    300010: "the editor's text selection tool is not available",
    300011: 'the document could not be read as a PDF',
    400000: 'the editor does not know this command',
    400003: 'the editor has no results for this search',
    400004: 'the editor has no identifier for the document',
    400005: 'the text was not found in the document',
    400006: 'the mark was already deleted in the editor',
    400007: 'the mark is no longer there',
    400013: 'the page does not exist',
    400015: 'the editor could not add the mark',
    400022: 'the editor could not apply the redaction',
    400023: 'none of the marks could be found in the document',
    400024: 'the redaction was cancelled at the prompt',
    400025: 'saving was cancelled',
  };

  const STEPS = {
    getCurrentDoc: 'Finding the current document',
    isCurrentDocModified: 'Checking for unsaved changes',
    getFilePageCount: 'Counting the pages',
    getFileTexts: 'Reading the text of the pages',
    findTextList: 'Locating the findings in the document',
    addAnnot: 'Marking a finding for redaction',
    removeAnnots: 'Removing a redaction mark',
    markTexts: 'Showing a finding',
    clearMarkTexts: 'Clearing the selection',
    hasOtherRedact: 'Looking for other redaction marks',
    redactApply: 'Applying the redaction',
    saveDocument: 'Saving the redacted copy',
    getUser: 'Reading the account',
    runFileOCR: 'Recognising the text of the pages',
  };

  function describeCode(ret) {
    return CODES[ret] || 'the editor reported an error';
  }

  // One plain sentence for a failed step, with the number for support.
  function describeFailure(command, ret) {
    const step = STEPS[command] || `The command ${command}`;
    if (ret === null || ret === undefined) return `${step} failed: the editor gave no usable answer.`;
    return `${step} failed: ${describeCode(ret)} (code ${ret}).`;
  }

  const api = { describeCode, describeFailure };
  if (typeof module === 'object' && module.exports) module.exports = api;
  else (root.Sablemark = root.Sablemark || {}).messages = api;
})(typeof globalThis !== 'undefined' ? globalThis : this);
