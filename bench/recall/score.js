// Scores detectors against the labelled corpus: per kind recall and precision, per file what was
// missed and what was found that is not personal data. Reads the pages' text as the editor gives
// it to the page (texts.json, written by run.py) and each document's labels.
//
// Usage: node score.js TEXTS.json [--peer] [--min-confidence X] [--json OUT.json]
// --peer also runs the open PII detector from npm (redact-pii, installed in this folder) on the
// same text.
'use strict';
const fs = require('node:fs');
const path = require('node:path');
const detectors = require('../../web/js/detectors.js');

// A value compared without its spacing, commas, trailing stops and case: the text layer may
// part a value over lines or columns and keep or drop a comma at a line end.
function compact(text) {
  return text.normalize('NFKC').toLowerCase().replace(/[\s,;]+/gu, '').replace(/[.:]+$/u, '');
}

// How much of `label` the findings cover, 0 to 1: each finding whose text stands inside the
// label covers its characters; one that holds the whole label covers it all.
function coverage(label, findings) {
  const covered = new Uint8Array(label.length);
  for (const f of findings) {
    if (!f.length) continue;
    if (f.includes(label)) return 1;
    for (let at = label.indexOf(f); at >= 0; at = label.indexOf(f, at + 1)) covered.fill(1, at, at + f.length);
  }
  return covered.reduce((a, b) => a + b, 0) / label.length;
}

const FOUND = 0.9;

function within(finding, labels) {
  return labels.some((l) => l.includes(finding) || finding.includes(l));
}

// Our detectors over the document's pages, as the page runs them (values parted by a page
// break included): [{kind, text}].
function ourFindings(pages, minConfidence) {
  return detectors.detectDocument(pages, { minConfidence, latestYear: 2026 })
    .map((f) => ({ kind: f.kind, text: f.text }));
}

// The peer replaces what it finds by the name of its kind; the replaced spans are found again by
// walking the original text along the redacted one.
const PEER_KINDS = {
  PERSON_NAME: 'name', PHONE_NUMBER: 'phone', US_SOCIAL_SECURITY_NUMBER: 'ssn',
  STREET_ADDRESS: 'address', ZIPCODE: 'address', CREDIT_CARD_NUMBER: 'card',
  EMAIL_ADDRESS: 'email', DIGITS: 'other', IP_ADDRESS: 'other', URL: 'other', USERNAME: 'other',
  PASSWORD: 'other', CREDENTIALS: 'other',
};
const PEER_TOKEN = new RegExp(`(${Object.keys(PEER_KINDS).join('|')})`, 'g');

function peerFindings(pages) {
  const { SyncRedactor } = require(path.join(__dirname, 'node_modules', 'redact-pii'));
  const redactor = new SyncRedactor();
  const found = [];
  for (const text of pages) {
    const pieces = redactor.redact(text).split(PEER_TOKEN);
    let at = 0;
    for (let i = 0; i < pieces.length; i += 2) {
      const literal = pieces[i];
      const start = literal ? text.indexOf(literal, at) : text.length;
      if (i > 0) found.push({ kind: PEER_KINDS[pieces[i - 1]], text: text.slice(at, Math.max(at, start)) });
      if (start < 0) break;
      at = start + literal.length;
    }
  }
  return found;
}

// Per kind: labelled values, found of the same kind, found by any kind, findings, findings that
// match a value of their kind, findings that match a value of any kind.
function score(files, finder) {
  const byKind = new Map();
  const row = (kind) => {
    if (!byKind.has(kind)) byKind.set(kind, { labels: 0, found: 0, foundAny: 0, findings: 0, right: 0, rightAny: 0 });
    return byKind.get(kind);
  };
  const perFile = [];
  for (const file of files) {
    const findings = finder(file.pages).map((f) => ({ ...f, compact: compact(f.text) }));
    const labels = new Map();
    for (const v of file.labels.values) labels.set(`${v.kind}\u0000${compact(v.value)}`, v);
    const missed = [];
    const wrong = [];
    for (const v of labels.values()) {
      const r = row(v.kind);
      const c = compact(v.value);
      r.labels++;
      const same = coverage(c, findings.filter((f) => f.kind === v.kind).map((f) => f.compact)) >= FOUND;
      const any = same || coverage(c, findings.map((f) => f.compact)) >= FOUND;
      if (same) r.found++;
      if (any) r.foundAny++;
      if (!same) missed.push({ kind: v.kind, value: v.value, otherKind: any });
    }
    const all = [...labels.values()].map((v) => ({ kind: v.kind, compact: compact(v.value) }));
    const seen = new Set();
    for (const f of findings) {
      const key = `${f.kind}\u0000${f.compact}`;
      if (seen.has(key) || !f.compact) continue;
      seen.add(key);
      const r = row(f.kind);
      r.findings++;
      const right = within(f.compact, all.filter((l) => l.kind === f.kind).map((l) => l.compact));
      const rightAny = right || within(f.compact, all.map((l) => l.compact));
      if (right) r.right++;
      if (rightAny) r.rightAny++;
      if (!rightAny) wrong.push({ kind: f.kind, text: f.text });
    }
    perFile.push({ file: file.file, missed, wrong });
  }
  return { byKind, perFile };
}

const ratio = (a, b) => (b ? (a / b).toFixed(3) : '  -  ');

function totals(byKind, kinds) {
  const t = { labels: 0, found: 0, foundAny: 0, findings: 0, right: 0, rightAny: 0 };
  for (const k of kinds) for (const key of Object.keys(t)) t[key] += (byKind.get(k) || {})[key] || 0;
  return t;
}

function printTable(ours, peer) {
  const kinds = [...detectors.KINDS.filter((k) => ours.byKind.has(k))];
  const head = ['kind', 'values', 'recall', 'any kind', 'findings', 'precision'];
  if (peer) head.push('peer recall', 'peer any kind', 'peer findings', 'peer precision');
  const lines = [head];
  const line = (kind, o, p) => {
    const cells = [kind, String(o.labels), ratio(o.found, o.labels), ratio(o.foundAny, o.labels),
      String(o.findings), ratio(o.right, o.findings)];
    if (p) cells.push(ratio(p.found, o.labels), ratio(p.foundAny, o.labels), String(p.findings), ratio(p.right, p.findings));
    lines.push(cells);
  };
  const empty = { labels: 0, found: 0, foundAny: 0, findings: 0, right: 0, rightAny: 0 };
  for (const k of kinds) line(k, ours.byKind.get(k), peer ? peer.byKind.get(k) || empty : null);
  if (peer && peer.byKind.has('other')) line('(peer: other digits)', empty, peer.byKind.get('other'));
  const all = [...new Set([...kinds, 'other'])];
  const o = totals(ours.byKind, all);
  const p = peer ? totals(peer.byKind, all) : null;
  lines.push(['all', String(o.labels), ratio(o.found, o.labels), ratio(o.foundAny, o.labels), String(o.findings),
    ratio(o.right, o.findings)].concat(p ? [ratio(p.found, o.labels), ratio(p.foundAny, o.labels),
    String(p.findings), ratio(p.right, p.findings)] : []));
  const widths = head.map((_, i) => Math.max(...lines.map((l) => l[i].length)));
  for (const l of lines) console.log(l.map((c, i) => (i ? c.padStart(widths[i]) : c.padEnd(widths[i]))).join('  '));
  console.log(`overall precision (a finding that matches a value of any kind): ours ${ratio(o.rightAny, o.findings)}` +
    (p ? `, peer ${ratio(p.rightAny, p.findings)}` : ''));
}

function main() {
  const args = process.argv.slice(2);
  const input = args.find((a) => !a.startsWith('--') && !/^\d/.test(a));
  const least = args.includes('--min-confidence') ? Number(args[args.indexOf('--min-confidence') + 1]) : undefined;
  const files = JSON.parse(fs.readFileSync(input, 'utf8'));
  const started = process.hrtime.bigint();
  const ours = score(files, (pages) => ourFindings(pages, least));
  const ms = Number(process.hrtime.bigint() - started) / 1e6;
  const peer = args.includes('--peer') ? score(files, peerFindings) : null;
  const chars = files.reduce((n, f) => n + f.pages.join('').length, 0);
  console.log(`${files.length} files, ${chars} characters of text; detectors took ${ms.toFixed(0)} ms` +
    (least !== undefined ? `, threshold ${least}` : `, threshold ${detectors.DEFAULT_MIN_CONFIDENCE}`));
  console.log('');
  printTable(ours, peer);
  console.log('');
  for (const f of ours.perFile) {
    if (!f.missed.length && !f.wrong.length) continue;
    console.log(f.file);
    for (const m of f.missed) {
      console.log(`  missed ${m.kind}: ${JSON.stringify(m.value)}${m.otherKind ? ' (found as another kind)' : ''}`);
    }
    for (const w of f.wrong) console.log(`  not personal, found as ${w.kind}: ${JSON.stringify(w.text)}`);
  }
  if (args.includes('--json')) {
    const out = args[args.indexOf('--json') + 1];
    const plain = (s) => s && { byKind: Object.fromEntries(s.byKind), perFile: s.perFile };
    fs.writeFileSync(out, JSON.stringify({ ours: plain(ours), peer: plain(peer) }, null, 1));
  }
}

main();
