'use strict';
const test = require('node:test');
const assert = require('node:assert/strict');
const { Bridge, BridgeError, parseEvent } = require('../js/bridge.js');

// A transport that keeps what the page posts and lets the test answer by hand.
function manualTransport() {
  const t = { posted: [], listeners: [] };
  t.postMessage = (text) => t.posted.push(JSON.parse(text));
  t.addEventListener = (type, fn) => t.listeners.push(fn);
  t.reply = (text) => t.listeners.forEach((fn) => fn({ data: text }));
  return t;
}
const tick = () => new Promise((r) => setImmediate(r));

test('requests go out as the four-element array, one at a time, answered by uuid', async () => {
  const t = manualTransport();
  const bridge = new Bridge(t, { idPrefix: 'p' });
  const first = bridge.call('getFileTexts', { pageIndex: -1 });
  const second = bridge.call('getFilePageCount');
  await tick();
  assert.deepEqual(t.posted, [['base', 'getFileTexts', { pageIndex: -1 }, 'p-1']]);
  assert.equal(bridge.busy, true);

  t.reply('{"data":null,"ret":0,"uuid":"someone-else"}\n'); // not ours: ignored
  t.reply('{"data":["a","b"],"ret":0,"uuid":"p-1"}\n');
  assert.deepEqual(await first, ['a', 'b']);
  await tick();
  assert.deepEqual(t.posted[1], ['base', 'getFilePageCount', {}, 'p-2']);
  t.reply('{"data":{"pageCount":2},"ret":0,"uuid":"p-2"}\n');
  assert.deepEqual(await second, { pageCount: 2 });
  assert.equal(bridge.busy, false);
});

test('pipelined requests go out together; a plain one waits for all of them', async () => {
  const t = manualTransport();
  const bridge = new Bridge(t, { idPrefix: 'p' });
  const marks = [1, 2, 3].map((index) => bridge.call('addAnnot', { index }, { pipelined: true }));
  const apply = bridge.call('redactApply', {});
  await tick();
  assert.deepEqual(t.posted.map((m) => [m[1], m[3]]), [['addAnnot', 'p-1'], ['addAnnot', 'p-2'], ['addAnnot', 'p-3']]);

  t.reply('{"data":null,"ret":0,"uuid":"p-1"}\n');
  t.reply('{"data":null,"ret":400000}\n'); // no uuid: the oldest in flight
  await assert.rejects(marks[1], (e) => e.ret === 400000);
  assert.equal(bridge.busy, true);
  t.reply('{"data":{"message":"m"},"ret":0,"uuid":"p-3"}\n');
  assert.deepEqual(await marks[2], { message: 'm' });
  await tick();
  assert.deepEqual(t.posted[3], ['base', 'redactApply', {}, 'p-4']);
  t.reply('{"data":[],"ret":0,"uuid":"p-4"}\n');
  assert.deepEqual(await apply, []);
  assert.equal(await marks[0], null);
});

test('failures reject with the code, also for replies that are not JSON', async () => {
  const t = manualTransport();
  const bridge = new Bridge(t);
  const failed = bridge.call('getFileTexts', { pageIndex: 9 });
  await tick();
  t.reply(`{"data":null,"ret":400013,"uuid":"${t.posted[0][3]}"}\n`);
  await assert.rejects(failed, (e) => e instanceof BridgeError && e.ret === 400013 &&
    e.command === 'getFileTexts' && /page does not exist \(code 400013\)/.test(e.message));

  const garbled = bridge.call('getCurrentDoc');
  await tick();
  t.reply('Error Message Parma');
  await assert.rejects(garbled, (e) => e.ret === null && /Error Message Parma/.test(e.message));
});

test('waits for a transport that appears late, and says so when there is none', async () => {
  const t = manualTransport();
  let present = null;
  const late = new Bridge(() => present, { pollMs: 5, connectTimeoutMs: 1000 });
  const call = late.call('getCurrentDoc');
  setTimeout(() => { present = t; }, 20);
  while (!t.posted.length) await new Promise((r) => setTimeout(r, 5));
  t.reply(`{"data":[],"ret":0,"uuid":"${t.posted[0][3]}"}`);
  assert.deepEqual(await call, []);

  const none = new Bridge(() => undefined, { pollMs: 5, connectTimeoutMs: 20 });
  await assert.rejects(none.call('getCurrentDoc'), /no connection to the editor/);
});

test('events are taken as objects or as JSON text', () => {
  assert.deepEqual(parseEvent({ name: 'ev-doc-closed', data: { id: '{A}' } }),
    { name: 'ev-doc-closed', data: { id: '{A}' } });
  assert.deepEqual(parseEvent('{"name":"ev-user-sign-out"}\n'), { name: 'ev-user-sign-out', data: {} });
  assert.deepEqual(parseEvent('{"data":null,"name":"ev-doc-before-open"}'),
    { name: 'ev-doc-before-open', data: {} });
  assert.equal(parseEvent('not json'), null);
  assert.equal(parseEvent({ data: {} }), null);
});
