// What the page's address asks for. The editor appends its own parameters (platform, version,
// language, theme colour, ...); the page reads the few below and ignores the rest.
(function (root) {
  'use strict';

  const detectors =
    typeof require === 'function' ? require('./detectors.js') : root.Sablemark.detectors;

  const YES = ['1', 'true', 'yes', 'on'];

  // search: the address's query text, with or without its "?".
  function parsePageOptions(search) {
    const params = new URLSearchParams(String(search || '').replace(/^\?/, ''));
    const flag = (name) => YES.includes(String(params.get(name) || '').toLowerCase());
    const kinds = (params.get('kinds') || '')
      .split(',')
      .map((k) => k.trim())
      .filter((k) => detectors.KINDS.includes(k));
    const least = Number(params.get('minConfidence'));
    const regions = (params.get('regions') || '')
      .split(',')
      .map((r) => r.trim().toUpperCase())
      .filter((r) => /^[A-Z]{2}$/.test(r));
    // The service's address, which the editor puts in as ai_domain: http or https only.
    let service = null;
    try {
      const url = new URL(params.get('ai_domain') || '');
      if (url.protocol === 'http:' || url.protocol === 'https:') service = url.origin + url.pathname.replace(/\/+$/, '');
    } catch (error) {
      service = null;
    }
    const theme = /^[0-9a-f]{6}$/i.test(params.get('ThemeColor') || '') ? `#${params.get('ThemeColor')}` : null;
    return {
      auto: flag('auto'),
      accountPage: params.get('defaultPage') === 'MyPlan',
      batch: flag('batchRedaction'),
      terms: detectors.parseTerms(params.getAll('terms').join(',')),
      wholeWord: flag('wholeWord'),
      kinds: kinds.length ? kinds : null,
      minConfidence: params.has('minConfidence') && least >= 0 && least <= 1 ? least : detectors.DEFAULT_MIN_CONFIDENCE,
      regions: regions.length ? regions : null,
      accent: theme,
      service,
    };
  }

  const api = { parsePageOptions };
  if (typeof module === 'object' && module.exports) module.exports = api;
  else (root.Sablemark = root.Sablemark || {}).pageOptions = api;
})(typeof globalThis !== 'undefined' ? globalThis : this);
