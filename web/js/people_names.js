// People's names. A named-entity recogniser that runs in the page (its English lexicon of first
// and last names and its tagger) finds names in running text; a name right after a title ("Ms",
// "Dr", "Herr") or a label ("Name:", "Dear", "Signed by") is taken in any language.
(function (root) {
  'use strict';

  const node = typeof require === 'function';
  const nlp = node ? require('compromise') : root.nlp;
  // First names of German, French, Spanish and Italian speakers, lower case. The page loads the
  // lists as classic scripts under a stand-in `module` (js/commonjs_shim.js): each is then a
  // global binding of its own, and the stand-in goes.
  /* global deNames, frNames, esNames, itNames */
  const FIRST_NAME_LISTS = node
    ? ['de', 'fr', 'es', 'it'].map((lang) => require(`gender-detection-from-name/names/${lang}.js`))
    : [typeof deNames === 'object' ? deNames : null, typeof frNames === 'object' ? frNames : null,
      typeof esNames === 'object' ? esNames : null, typeof itNames === 'object' ? itNames : null]
      .filter(Boolean);
  if (!node && root.module && root.module.standIn) delete root.module;

  // Words that start with a capital, as names are written; particles may stand between them.
  const NAME_WORD = "\\p{Lu}[\\p{Ll}\\p{M}]*(?:['’\\-]\\p{Lu}?[\\p{Ll}\\p{M}]+)*\\.?";
  const PARTICLE = '(?:van|von|der|den|de|del|della|di|da|du|la|le|bin|al|ter|ten|zu)';
  const NAME =
    `${NAME_WORD}(?:[ \\t]+(?:${PARTICLE}[ \\t]+)*${NAME_WORD}){0,3}`;
  const TITLE = '(?:Mr|Mrs|Ms|Miss|Mx|Dr|Prof|Sir|Dame|Herr|Frau|Hr|Fr|M|Mme|Mlle|Sr|Sra|Srta|Sig|Sig\\.ra|Dhr|Mevr)\\.?';
  const TITLE_WORD = new RegExp(`^${TITLE}$`, 'u');
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
    `(?<![\\p{L}\\p{N}])${LABEL}(?![\\p{L}\\p{N}])[ \\t]*[:,]?[ \\t]*(?:\\r?\\n[ \\t]*){0,2}`, 'giu');
  const NAME_AFTER_CUE = new RegExp(`(?:${TITLE}[ \\t]+)?(${NAME})(?![\\p{L}\\p{N}])`, 'uy');
  // Capitalised words that follow a label but are no names.
  const NOT_NAMES = new Set([
    'Sir', 'Madam', 'Sirs', 'Customer', 'Colleague', 'Colleagues', 'Team', 'All', 'Member',
    'Herren', 'Damen', 'Monsieur', 'Madame', 'Señor', 'Señora', 'The', 'Of', 'And', 'Date', 'No',
    'Number', 'Address', 'Phone', 'Email', 'Signature', 'Page', 'Ref', 'Reference', 'Employee',
    'Customer', 'Account', 'Passport', 'Birth', 'Name', 'Mr', 'Mrs', 'Ms', 'Dr', 'Hiring', 'Manager',
    // closings of letters, which stand right above the signer's name
    'Regards', 'Sincerely', 'Grüßen', 'Grüße', 'Gruß', 'Cordialement', 'Salutations', 'Saludos',
    'Atentamente', 'Groeten',
  ]);

  // The name within `text` without the headings, titles and greetings at its ends, as it stands
  // in the text (its own blanks and line breaks kept); '' when none is left or when a blank line
  // parts it.
  function trimName(text) {
    const words = [...text.matchAll(/\S+/g)];
    const skip = (w) => NOT_NAMES.has(w[0].replace(/[.,:]$/, '')) || TITLE_WORD.test(w[0]);
    while (words.length && skip(words[words.length - 1])) words.pop();
    while (words.length && skip(words[0])) words.shift();
    if (!words.length) return '';
    const last = words[words.length - 1];
    // A full stop ends a sentence unless it ends an initial.
    const end = last.index + last[0].length - (/\p{L}{2,}[.,]$/u.test(last[0]) ? 1 : 0);
    const name = text.slice(words[0].index, end);
    return /\n[ \t]*\r?\n/.test(name) ? '' : name;
  }

  // A heading ("Name") alone on its line may head a table's column: the lines below it that
  // start with a name of two words or more, down to the first sentence, hold that column's names.
  const COLUMN_LINES = 300;
  const LINE_START_NAME = new RegExp(`^[ \\t]*(${NAME})(?![\\p{L}\\p{N}])`, 'u');

  function column(text, from) {
    const found = [];
    let at = from;
    for (const line of text.slice(from).split('\n').slice(0, COLUMN_LINES)) {
      // a sentence is no table's cell: the table has ended
      if (/[.!?]\s*$/.test(line) && line.trim().split(/\s+/).length > 3) break;
      const m = LINE_START_NAME.exec(line);
      const name = m && trimName(m[1]);
      if (name && name.split(/\s+/).length > 1) {
        const start = at + line.indexOf(name);
        found.push({ kind: 'name', text: name, start, end: start + name.length, confidence: 0.75 });
      }
      at += line.length + 1;
    }
    return found.length >= 3 ? found : [];
  }

  function cued(text, cues, confidence) {
    const found = [];
    cues.lastIndex = 0;
    for (const cue of text.matchAll(cues)) {
      const cueEnd = cue.index + cue[0].length;
      if (/^[ \t]*:?[ \t]*$/.test(text.slice(text.lastIndexOf('\n', cue.index) + 1, cue.index)) &&
          /\n/.test(cue[0]) && cues === LABEL_CUE) {
        found.push(...column(text, cueEnd));
      }
      NAME_AFTER_CUE.lastIndex = cueEnd;
      const m = NAME_AFTER_CUE.exec(text);
      if (!m) continue;
      const name = trimName(m[1]);
      if (!name) continue;
      const start = m.index + m[0].length - m[1].length + m[1].indexOf(name);
      // one capitalised word after "Dear" or "Ms" is a surname; after other labels it is weaker
      const words = name.split(/\s+/).length;
      found.push({ kind: 'name', text: name, start, end: start + name.length,
        confidence: words > 1 ? confidence : confidence - 0.2 });
    }
    return found;
  }

  // Two capitalised words in a row, perhaps over a line break: where a name may stand.
  const NAME_PAIR = new RegExp(`${NAME_WORD}(?:[ \\t]+|[ \\t]*\\r?\\n[ \\t]*)(?:${PARTICLE}[ \\t]+)*${NAME_WORD}`, 'gu');
  const WHOLE_NAME = new RegExp(`^${NAME}$`, 'u');

  // The places that hold two capitalised words in a row, with a few words around them, as one
  // text for the recogniser, and where each piece starts in the page: the recogniser is slow, and
  // most of a page (numbers, tables, lower-case prose) cannot hold a name of two words.
  const CONTEXT = 24;

  function candidateLines(text) {
    const starts = [];
    NAME_PAIR.lastIndex = 0;
    for (const m of text.matchAll(NAME_PAIR)) {
      let from = Math.max(0, m.index - CONTEXT);
      let to = Math.min(text.length, m.index + m[0].length + CONTEXT);
      while (from > 0 && /\S/.test(text[from - 1])) from--;
      while (to < text.length && /\S/.test(text[to])) to++;
      const last = starts[starts.length - 1];
      if (last && from <= last.to) last.to = Math.max(last.to, to);
      else starts.push({ from, to });
    }
    let joined = '';
    const pieces = [];
    for (const { from, to } of starts) {
      if (joined) joined += '\n';
      pieces.push({ at: joined.length, from, length: to - from });
      joined += text.slice(from, to);
    }
    return { joined, pieces };
  }

  // Names the recogniser tags as people: two or more capitalised words of which one is a known
  // first or last name are nearly certain; one word alone is too weak to take.
  function recognised(text) {
    const { joined, pieces } = candidateLines(text);
    if (!joined) return [];
    const toPage = (at) => {
      const piece = pieces.findLast((p) => p.at <= at);
      return piece.from + (at - piece.at);
    };
    const found = [];
    // Line breaks read as blanks (same length), so that a name broken over two lines is one.
    for (const person of nlp(joined.replace(/[\r\n]/g, ' ')).people().json({ offset: true })) {
      const terms = person.terms.filter((t) => !t.tags.includes('Honorific') && !TITLE_WORD.test(t.text));
      if (!terms.length) continue;
      const first = terms[0].offset.start;
      const lastTerm = terms[terms.length - 1];
      const start = toPage(first);
      const end = toPage(lastTerm.offset.start) + lastTerm.offset.length;
      const span = text.slice(start, end);
      let name = trimName(span);
      // A name of two words or more ends at its line's end (the next line is another cell); a
      // single word goes on to the next line (a name broken by the line's end).
      const [firstLine] = name.split(/\r?\n/);
      if (firstLine !== name && firstLine.trim().split(/\s+/).length > 1) name = firstLine.trimEnd();
      if (!name || !WHOLE_NAME.test(name.replace(/\s+/g, ' '))) continue;
      const nameStart = start + span.indexOf(name);
      // words before a colon are a label ("Bill To:"), not a name
      if (/^[ \t]*:/.test(text.slice(nameStart + name.length))) continue;
      const known = terms.some((t) => t.tags.includes('FirstName')) && terms.some((t) => t.tags.includes('LastName'));
      const confidence = terms.length > 1 ? (known ? 0.85 : 0.7) : 0.35;
      found.push({ kind: 'name', text: name, start: nameStart, end: nameStart + name.length, confidence });
    }
    return found;
  }

  // Names the English recogniser does not know: a first name of the lists followed by one or
  // two capitalised words (particles between them), the first of them perhaps on the next line. The lists hold words that are
  // no names in other uses ("May", "Paris", "General"), so a first name that the recogniser's
  // lexicon knows as another kind of word is not taken, nor a word after it that it knows as one;
  // places and organisations named after people ("San Martín", "Marie Curie Institut") neither.
  const NON_NAME_TAGS = /^(?!.*(?:Name|Person|Honorific))/;
  const PLACE_WORDS = new Set(['san', 'santa', 'santo', 'são', 'saint', 'sainte', 'st', 'sankt',
    'la', 'le', 'les', 'el', 'los', 'las', 'der', 'die', 'das', 'den', 'het', 'du', 'des', 'del',
    'mont', 'monte', 'port', 'puerto', 'fort', 'bad', 'rue', 'calle', 'avenida', 'avenue']);
  const PLACE_AFTER = /^(?:street|road|avenue|lane|drive|court|square|place|way|stra(?:ß|ss)e|straat|weg|laan|plein|gasse|allee|platz|ring|institute?|institut|university|universit[äé]t?|universidad|stiftung|foundation|fondation|fundaci[óo]n|gmbh|ag|ltd|inc|sa|sl|bv|nv|hospital|klinik|clinic|school|schule|[ée]cole|colegio|college|church|kirche|[ée]glise|iglesia|bank|banque|banco|hotel|museum|mus[ée]e|museo|award|prize|prix|preis|premio)$/iu;
  const CAPITALISED = new RegExp(`(?<![\\p{L}\\p{N}])${NAME_WORD}`, 'gu');
  const LISTED_REST = new RegExp(`(?:[ \\t]+|[ \\t]*\\r?\\n[ \\t]*)(?:${PARTICLE}[ \\t]+)*${NAME_WORD}` +
    `(?:[ \\t]+(?:${PARTICLE}[ \\t]+)*${NAME_WORD})?(?![\\p{L}\\p{N}])`, 'uy');
  const PARTICLE_WORD = new RegExp(`^${PARTICLE}$`, 'u');

  function lexiconTag(word) {
    return nlp.world().model.one.lexicon[word.toLowerCase().replace(/[.,]$/, '')];
  }

  function listedFirstName(word) {
    const lower = word.toLowerCase();
    if (PLACE_WORDS.has(lower) || !FIRST_NAME_LISTS.some((list) => list.has(lower))) return false;
    const tag = lexiconTag(word);
    return !tag || !NON_NAME_TAGS.test(tag);
  }

  function listed(text) {
    const found = [];
    for (const first of text.matchAll(CAPITALISED)) {
      const before = /(\p{L}+)[ \t]+$/u.exec(text.slice(Math.max(0, first.index - 20), first.index));
      if (!listedFirstName(first[0]) || (before && PLACE_WORDS.has(before[1].toLowerCase()))) continue;
      LISTED_REST.lastIndex = first.index + first[0].length;
      const rest = LISTED_REST.exec(text);
      if (!rest) continue;
      const words = rest[0].trim().split(/\s+/).filter((w) => !PARTICLE_WORD.test(w));
      const last = words[words.length - 1].replace(/\.$/, '');
      const lastTag = lexiconTag(last);
      if (PLACE_AFTER.test(last) || NOT_NAMES.has(last) || (lastTag && NON_NAME_TAGS.test(lastTag))) continue;
      const whole = first[0] + rest[0];
      const name = trimName(whole);
      if (!name || name.split(/\s+/).length < 2) continue;
      const start = first.index + whole.indexOf(name);
      found.push({ kind: 'name', text: name, start, end: start + name.length, confidence: 0.7 });
    }
    return found;
  }

  // [{kind: 'name', text, start, end, confidence}]; where findings overlap the more certain one
  // stays.
  function findNames(text) {
    const all = [...cued(text, TITLE_CUE, 0.95), ...cued(text, LABEL_CUE, 0.9), ...recognised(text),
      ...listed(text)];
    all.sort((a, b) => b.confidence - a.confidence || b.end - b.start - (a.end - a.start));
    const kept = [];
    for (const f of all) if (f.text && !kept.some((k) => f.start < k.end && k.start < f.end)) kept.push(f);
    return kept.sort((a, b) => a.start - b.start);
  }

  const api = { findNames };
  if (typeof module === 'object' && module.exports) module.exports = api;
  else (root.Sablemark = root.Sablemark || {}).peopleNames = api;
})(typeof globalThis !== 'undefined' ? globalThis : this);
