// The account's usage as the service counts it: documents and findings redacted this month. The
// page asks the editor for the user's short-lived service token (getUserJWT), then the service's
// API at the address the editor gave the page; after each successful apply it reports the
// redaction there, which is how the count grows. Nothing here blocks the redaction: a service
// that cannot be reached leaves a message on the account page and nothing else.
(function (root) {
  'use strict';

  const USAGE_PATH = '/api/v1/usage';
  const REPORT_PATH = '/api/v1/usage/redactions';

  // The service's answer, checked: {month, documents, findings}, or null when it is not one.
  function readUsage(body) {
    const data = body && body.ret === 0 ? body.data : null;
    if (!data || typeof data.month !== 'string' || !/^\d{4}-\d{2}$/.test(data.month)) return null;
    const count = (n) => (Number.isSafeInteger(n) && n >= 0 ? n : null);
    const documents = count(data.documentsRedacted);
    const findings = count(data.findingsRedacted);
    if (documents === null || findings === null) return null;
    return { month: data.month, documents, findings };
  }

  class AccountUsage {
    // address: the service's address (http or https), or null when the editor gave none;
    // fetch: the browser's fetch.
    constructor({ workflow, address, fetch }) {
      this.workflow = workflow;
      this.address = address || null;
      this._fetch = fetch;
      this._token = null;
      this.usage = null; // {month, documents, findings} as last read
      this.error = null; // why the usage could not be read, in the user's words
    }

    async _serviceToken(fresh) {
      if (fresh || !this._token) {
        const data = await this.workflow.bridge.call('getUserJWT');
        this._token = data && typeof data.jwtResult === 'string' && data.jwtResult ? data.jwtResult : null;
        if (!this._token) throw new Error('the account gave no service token');
      }
      return this._token;
    }

    // One request to the service with the user's token; a refused token is asked for again once,
    // since a service token lives a short time.
    async _request(path, init) {
      for (const fresh of [false, true]) {
        const token = await this._serviceToken(fresh);
        const response = await this._fetch(this.address + path, {
          ...init,
          headers: { ...(init && init.headers), Authorization: `Bearer ${token}` },
        });
        if (response.status === 401) {
          if (!fresh) continue;
          break;
        }
        if (!response.ok) throw new Error(`the service answered ${response.status}`);
        const usage = readUsage(await response.json());
        if (!usage) throw new Error('the service\'s answer could not be read');
        return usage;
      }
      throw new Error('the service did not accept the account; sign in again');
    }

    // Reads the month's usage; a failure is kept in `error` for the account page.
    async load() {
      if (!this.address) {
        this.usage = null;
        this.error = 'the editor did not give the service\'s address';
        return null;
      }
      try {
        this.usage = await this._request(USAGE_PATH, { method: 'GET' });
        this.error = null;
      } catch (error) {
        this.usage = null;
        this.error = error.message;
      }
      return this.usage;
    }

    // Tells the service that a document was redacted, with how many findings. A failure only
    // makes the shown usage out of date, so it is dropped.
    async reportRedaction(session) {
      if (!this.address) return;
      const findings = session.findings.filter((f) => f.matches.some((m) => m.applied)).length;
      try {
        this.usage = await this._request(REPORT_PATH, {
          method: 'POST',
          headers: { 'Content-Type': 'application/json' },
          body: JSON.stringify({ documents: 1, findings }),
        });
      } catch (error) {
        this.usage = null;
      }
    }
  }

  // The month as the account page says it: "November 2026".
  function monthName(month) {
    const [year, number] = month.split('-').map(Number);
    const names = ['January', 'February', 'March', 'April', 'May', 'June', 'July', 'August',
      'September', 'October', 'November', 'December'];
    return `${names[number - 1] || month} ${year}`;
  }

  // The usage line of the account page.
  function usageLine(usage, error) {
    if (usage) {
      return `${monthName(usage.month)}: ${usage.documents} document(s) redacted, ` +
        `${usage.findings} finding(s).`;
    }
    return error ? `Usage could not be read: ${error}.` : 'Reading the usage…';
  }

  const api = { AccountUsage, readUsage, usageLine };
  if (typeof module === 'object' && module.exports) module.exports = api;
  else (root.Sablemark = root.Sablemark || {}).accountUsage = api;
})(typeof globalThis !== 'undefined' ? globalThis : this);
