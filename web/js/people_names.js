// People's names. A named-entity recogniser that runs in the page (its English lexicon of first
// and last names and its tagger) finds names in running text; a name right after a title ("Ms",
// "Dr", "Herr") or a label ("Name:", "Dear", "Signed by") is taken in any language.
(function (root) {
  'use strict';

  const node = typeof require === 'function';
  const nlp = node ? require('compromise') : root.nlp;

  // Words that start with a capital, as names are written; particles may stand between them.
  const NAME_WORD = "\\p{Lu}[\\p{Ll}\\p{M}]*(?:['’\\-]\\p{Lu}?[\\p{Ll}\\p{M}]+)*\\.?";
  const PARTICLE = '(?:van|von|der|den|de|del|della|di|da|du|la|le|bin|al|ter|ten|zu)';
  const NAME =
    `${NAME_WORD}(?:[ \\t]+(?:${PARTICLE}[ \\t]+)*${NAME_WORD}){0,3}`;
  const TITLE = '(?:Mr|Mrs|Ms|Miss|Mx|Dr|Prof|Sir|Dame|Herr|Frau|Hr|Fr|M|Mme|Mlle|Sr|Sra|Srta|Sig|Sig\\.ra|Dhr|Mevr)\\.?';
  const LABEL =
    '(?:(?:full[ \\t]+|first[ \\t]+|last[ \\t]+|sur|given[ \\t]+|family[ \\t]+|patient[ \\t]+|employee[ \\t]+|' +
    "customer[ \\t]+|client[ \\t]+|account[ \\t]+holder(?:'s)?[ \\t]+|applicant(?:'s)?[ \\t]+)?name|" +
    'nom|name|nombre|nome|naam|vorname|nachname|pr[ée]nom|apellidos?|dear|attn\\.?|attention|' +
    'signed(?:[ \\t]+by)?|sincerely|regards|yours(?:[ \\t]+(?:sincerely|faithfully|truly))?|' +
    'prepared[ \\t]+by|approved[ \\t]+by|witness|employee|patient|applicant|account[ \\t]+holder|' +
    'sehr[ \\t]+geehrte[rn]?|liebe[rn]?|cher|ch[èe]re|estimad[oa])';
  // After a title the name follows on the same line; after a label on the same line or the next.
  // The cue is matched in any case, the name only as written with capitals.
  const TITLE_CUE = new RegExp(`(?<![\\p{L}\\p{N}])${TITLE}[ \\t]+`, 'gu');
  const LABEL_CUE = new RegExp(
    `(?<![\\p{L}\\p{N}])${LABEL}(?![\\p{L}\\p{N}])[ \\t]*[:,]?[ \\t]*(?:\\r?\\n[ \\t]*)?`, 'giu');
  const NAME_AFTER_CUE = new RegExp(`(?:${TITLE}[ \\t]+)?(${NAME})(?![\\p{L}\\p{N}])`, 'uy');
  // Capitalised words that follow a label but are no names.
  const NOT_NAMES = new Set([
    'Sir', 'Madam', 'Sirs', 'Customer', 'Colleague', 'Colleagues', 'Team', 'All', 'Member',
    'Herren', 'Damen', 'Monsieur', 'Madame', 'Señor', 'Señora', 'The', 'Of', 'And', 'Date', 'No',
    'Number', 'Address', 'Phone', 'Email', 'Signature', 'Page', 'Ref', 'Reference', 'Employee',
    'Customer', 'Account', 'Passport', 'Birth', 'Name', 'Mr', 'Mrs', 'Ms', 'Dr', 'Hiring', 'Manager',
  ]);

  function trimName(text) {
    const words = text.split(/[ \t]+/);
    while (words.length && NOT_NAMES.has(words[words.length - 1].replace(/\.$/, ''))) words.pop();
    while (words.length && NOT_NAMES.has(words[0].replace(/\.$/, ''))) words.shift();
    // A full stop ends a sentence unless it ends an initial.
    const last = words[words.length - 1];
    if (last && /\p{L}{2,}\.$/u.test(last)) words[words.length - 1] = last.slice(0, -1);
    return words.join(' ');
  }

  function cued(text, cues, confidence) {
    const found = [];
    cues.lastIndex = 0;
    for (const cue of text.matchAll(cues)) {
      NAME_AFTER_CUE.lastIndex = cue.index + cue[0].length;
      const m = NAME_AFTER_CUE.exec(text);
      if (!m) continue;
      const name = trimName(m[1]);
      if (!name) continue;
      const start = m.index + m[0].length - m[1].length + m[1].indexOf(name);
      // one capitalised word after "Dear" or "Ms" is a surname; after other labels it is weaker
      const words = name.split(/[ \t]+/).length;
      found.push({ kind: 'name', text: name, start, end: start + name.length,
        confidence: words > 1 ? confidence : confidence - 0.2 });
    }
    return found;
  }

  // Names the recogniser tags as people: two or more capitalised words of which one is a known
  // first or last name are nearly certain; one word alone is too weak to take.
  function recognised(text) {
    const found = [];
    const people = nlp(text).people().json({ offset: true });
    for (const person of people) {
      const terms = person.terms.filter((t) => !t.tags.includes('Honorific'));
      if (!terms.length) continue;
      const first = person.terms.indexOf(terms[0]);
      const last = person.terms.indexOf(terms[terms.length - 1]);
      const start = person.terms[first].offset.start;
      const end = person.terms[last].offset.start + person.terms[last].offset.length;
      const written = text.slice(start, end);
      if (!new RegExp(`^${NAME}$`, 'u').test(written) || /[\r\n]/.test(written)) continue;
      const known = terms.some((t) => t.tags.includes('FirstName')) && terms.some((t) => t.tags.includes('LastName'));
      const confidence = terms.length > 1 ? (known ? 0.85 : 0.7) : 0.35;
      found.push({ kind: 'name', text: trimName(written), start, end: start + trimName(written).length, confidence });
    }
    return found;
  }

  // [{kind: 'name', text, start, end, confidence}]; where findings overlap the more certain one
  // stays.
  function findNames(text) {
    const all = [...cued(text, TITLE_CUE, 0.95), ...cued(text, LABEL_CUE, 0.9), ...recognised(text)];
    all.sort((a, b) => b.confidence - a.confidence || b.end - b.start - (a.end - a.start));
    const kept = [];
    for (const f of all) if (f.text && !kept.some((k) => f.start < k.end && k.start < f.end)) kept.push(f);
    return kept.sort((a, b) => a.start - b.start);
  }

  const api = { findNames };
  if (typeof module === 'object' && module.exports) module.exports = api;
  else (root.Sablemark = root.Sablemark || {}).peopleNames = api;
})(typeof globalThis !== 'undefined' ? globalThis : this);
