'use strict';
// The account page's usage, against the local account server that the desktop script starts.
const test = require('node:test');
const assert = require('node:assert/strict');
const path = require('node:path');
const { spawn } = require('node:child_process');
const { Bridge } = require('../js/bridge.js');
const { Workflow } = require('../js/workflow.js');
const { AccountUsage, readUsage, usageLine } = require('../js/account_usage.js');
const { FakePlugin } = require('./fake_plugin.js');

// The account server in a child process; gives its address and a way to stop it.
function startServer() {
  const child = spawn('python3', ['-u', '-c',
    'import local_service, sys\nserver = local_service.AccountServer()\nprint(server.address)\nsys.stdin.read()'],
  { cwd: path.join(__dirname, '..', '..', 'scripts'), stdio: ['pipe', 'pipe', 'inherit'] });
  return new Promise((resolve, reject) => {
    child.on('error', reject);
    child.stdout.once('data', (line) => resolve({ address: String(line).trim(), stop: () => child.kill() }));
  });
}

// The editor's getUserJWT gives the service token that the account server issued for the account.
class EditorWithAccount extends FakePlugin {
  _getUserJWT() {
    return [0, { jwtResult: this.serviceTokens.shift() }];
  }
}

async function serviceToken(address, account) {
  const answer = await (await fetch(`${address}/api/v1/user/jwt?token=${account}`)).json();
  return answer.data.jwtResult;
}

function pageWith(address, plugin) {
  const workflow = new Workflow({ bridge: new Bridge(plugin.transport), nameBase: 't' });
  const requests = [];
  workflow.usage = new AccountUsage({
    workflow, address, fetch: (url, init) => { requests.push([url, init]); return fetch(url, init); },
  });
  workflow.page = 'account';
  return { workflow, requests };
}

test('the account page shows the month\'s usage that the service counts, and each apply adds to it', async (t) => {
  const server = await startServer();
  t.after(server.stop);
  const plugin = new EditorWithAccount({
    docs: [{ id: '{DOC-1}', filePath: '/data/report.pdf', pages: ['E-mail: ana@example.com', 'Card: 4539 1488 0343 6467'] }],
  });
  // The first token has expired: the page asks the editor for a fresh one once.
  plugin.serviceTokens = ['expired', await serviceToken(server.address, 'account-1')];
  const { workflow, requests } = pageWith(server.address, plugin);

  await workflow.loadAccount();
  const month = new Date().toISOString().slice(0, 7);
  assert.deepEqual(workflow.usage.usage, { month, documents: 0, findings: 0 });
  assert.equal(requests.length, 2);
  assert.equal(requests[1][0], `${server.address}/api/v1/usage`);
  assert.match(requests[1][1].headers.Authorization, /^Bearer [0-9a-f]{32}$/);

  await workflow.scan();
  const session = await workflow.apply();
  assert.ok(session.saved);
  assert.deepEqual(workflow.usage.usage, { month, documents: 1, findings: 2 });

  // The count is the service's: a page opened later reads it again.
  plugin.serviceTokens = [await serviceToken(server.address, 'account-1')];
  const later = pageWith(server.address, plugin).workflow;
  await later.loadAccount();
  assert.deepEqual(later.usage.usage, workflow.usage.usage);
  assert.match(usageLine(later.usage.usage), /^\w+ \d{4}: 1 document\(s\) redacted, 2 finding\(s\)\.$/);

  // Another account's usage is its own.
  plugin.serviceTokens = [await serviceToken(server.address, 'account-2')];
  const other = pageWith(server.address, plugin).workflow;
  await other.loadAccount();
  assert.equal(other.usage.usage.documents, 0);
});

test('usage that cannot be read says why and blocks nothing', async () => {
  const refused = async () => ({ ok: false, status: 401, json: async () => ({}) });
  const cases = [
    ['no address', null, refused, null, /did not give the service's address/],
    ['signed out', 'http://127.0.0.1:9', refused, 200002, /sign in again/],
    ['refused twice', 'http://127.0.0.1:9', refused, null, /did not accept the account/],
    ['not a usage', 'http://127.0.0.1:9', async () => ({ ok: true, status: 200, json: async () => ({ ret: 0, data: { month: 'soon' } }) }), null, /could not be read/],
  ];
  for (const [name, address, fetchStub, jwtFailure, message] of cases) {
    const plugin = new EditorWithAccount({ docs: [] });
    plugin.serviceTokens = ['a', 'b'];
    if (jwtFailure) plugin.failures.set('getUserJWT', jwtFailure);
    const workflow = new Workflow({ bridge: new Bridge(plugin.transport) });
    workflow.usage = new AccountUsage({ workflow, address, fetch: fetchStub });
    workflow.page = 'account';
    await workflow.loadAccount();
    assert.ok(workflow.account, name);
    assert.equal(workflow.usage.usage, null, name);
    assert.match(usageLine(null, workflow.usage.error), message, name);
  }
});

test('only a whole usage answer is read', () => {
  const rows = [
    [{ ret: 0, data: { month: '2026-11', documentsRedacted: 3, findingsRedacted: 40 } }, { month: '2026-11', documents: 3, findings: 40 }],
    [{ ret: 1, data: { month: '2026-11', documentsRedacted: 3, findingsRedacted: 40 } }, null],
    [{ ret: 0, data: { month: '2026-11', documentsRedacted: -1, findingsRedacted: 40 } }, null],
    [{ ret: 0, data: { month: '2026-11', documentsRedacted: '3', findingsRedacted: 40 } }, null],
    [{ ret: 0, data: { month: '<b>', documentsRedacted: 3, findingsRedacted: 40 } }, null],
    [null, null],
  ];
  for (const [body, expected] of rows) assert.deepEqual(readUsage(body), expected, JSON.stringify(body));
});
