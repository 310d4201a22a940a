'use strict';
// The page's detectors as the browser loads them: index.html's classic scripts, libraries' browser
// builds first, run in order in one global scope without require.
const test = require('node:test');
const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const vm = require('node:vm');

const web = path.join(__dirname, '..');

function loadPage(until) {
  const html = fs.readFileSync(path.join(web, 'index.html'), 'utf8');
  const scripts = [...html.matchAll(/<script src="([^"]+)"><\/script>/g)].map((m) => m[1]);
  const context = vm.createContext({ console, URLSearchParams });
  context.globalThis = context;
  context.self = context;
  for (const src of scripts.slice(0, scripts.indexOf(until) + 1)) {
    vm.runInContext(fs.readFileSync(path.join(web, src), 'utf8'), context, { filename: src });
  }
  return context;
}

test('the scripts of index.html give the page its detectors with their libraries', () => {
  const page = loadPage('js/detectors.js');
  const text = 'Dear Ms Sarah Mitchell, call +44 20 7946 0958. SSN 536-22-8726, ' +
    'Address: 221B Baker Street, London NW1 6XE. Employee ID: EMP-20417. Laut Wiebke Kühnel.';
  const found = page.Sablemark.detectors.detectText(text, { latestYear: 2024 });
  const kinds = Array.from(found, (f) => `${f.kind} ${f.text}`);
  assert.deepEqual(kinds, ['name Sarah Mitchell', 'phone +44 20 7946 0958', 'ssn 536-22-8726',
    'address 221B Baker Street, London NW1 6XE', 'recordNumber EMP-20417', 'name Wiebke Kühnel']);
  assert.equal(page.module, undefined, 'the stand-in module of the name lists is gone');
});
