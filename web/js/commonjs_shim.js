// A stand-in `module` for the classic scripts after it that are CommonJS files (the first-name
// lists): they assign module.exports and keep their value in a global binding of their own.
// people_names.js reads those bindings and takes the stand-in away again, so that no later
// script takes the page for Node.
(function (root) {
  'use strict';

  root.module = { exports: {}, standIn: true };
})(typeof globalThis !== 'undefined' ? globalThis : this);
