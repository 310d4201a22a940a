// Postal addresses: a street line (house number and street, in the English, German, Dutch,
// French and Spanish orders) and the lines or comma-parted segments after it up to the postcode
// and town. A street line alone is an address too, with less confidence; "Address:" before it
// adds some.
(function (root) {
  'use strict';

  const node = typeof require === 'function';
  const edges = node ? require('./text_edges.js') : root.Sablemark.textEdges;

  const WORD = "\\p{Lu}[\\p{L}\\p{M}'’.\\-]*";
  const SMALL = "(?:of|the|de|la|le|du|des|del|d'|l'|van|von|der|am|an|auf|im|in|zum|zur)";
  const WORDS = `${WORD}(?:[ \\t]+(?:${SMALL}[ \\t]+)?${WORD}){0,3}`;
  // A town's name: no full stop in it, so that it ends before the next sentence.
  const TOWN_WORD = "\\p{Lu}[\\p{L}\\p{M}'’\\-]*";
  const TOWN = `${TOWN_WORD}(?:[ \\t]+(?:${SMALL}[ \\t]+)?${TOWN_WORD}){0,3}`;
  const NUMBER = '\\d{1,5}(?:[ \\t]?[A-Za-z](?![\\p{L}]))?(?:[\\-–/]\\d{1,5}[A-Za-z]?)?';
  const UNIT_NAME = '(?:Flat|Apartment|Apt\\.?|Unit|Suite|Ste\\.?|Room|Floor)[ \\t]+[A-Z0-9\\-]{1,6}';
  const UNIT = `(?:${UNIT_NAME},?[ \\t]+)`;
  const SUFFIX =
    '(?:Street|St\\.?|Road|Rd\\.?|Avenue|Ave\\.?|Lane|Ln\\.?|Drive|Dr\\.?|Close|Way|Place|Pl\\.?|' +
    'Court|Ct\\.?|Crescent|Gardens|Terrace|Square|Sq\\.?|Grove|Hill|Row|Mews|Walk|Parade|Park|' +
    'Boulevard|Blvd\\.?|Parkway|Pkwy\\.?|Highway|Hwy\\.?|Circle|Cir\\.?|Trail|Plaza|Green|View|Rise)';
  const DIRECTION = '(?:[ \\t]+(?:N|S|E|W|NE|NW|SE|SW|North|South|East|West)(?![\\p{L}]))?';
  const GERMAN_STREET =
    "\\p{Lu}[\\p{L}\\p{M}.\\-]*(?:stra(?:ß|ss)e|str\\.|weg|allee|platz|gasse|ring|damm|ufer|chaussee|" +
    'pfad|markt|steig|straat|laan|gracht|plein|kade|dijk|singel)';
  // "Berliner Straße", "Am Markt", "An der Alster": a word before the street's own name
  const GERMAN_STREET_TWO =
    `(?:\\p{Lu}[\\p{L}\\p{M}.\\-]*er[ \\t]+)?(?:${GERMAN_STREET}|(?:Stra(?:ß|ss)e|Weg|Allee|Platz|Gasse|Ring|Damm)(?![\\p{L}]))|` +
    '(?:Am|An[ \\t]+der|Auf[ \\t]+dem|Im|In[ \\t]+der|Zum|Zur|Unter[ \\t]+den)[ \\t]+\\p{Lu}[\\p{L}\\p{M}\\-]+';
  const FRENCH_WAY =
    "(?:rue|avenue|av\\.|boulevard|bd|place|chemin|all[ée]e|impasse|quai|route|cours|square|passage)";
  const SPANISH_WAY = '(?:Calle|C/|Avenida|Avda\\.?|Plaza|Pza\\.?|Paseo|Camino|Carrera|Ronda|Travesía)';

  const STREETS = [
    `${UNIT}?${NUMBER},?[ \\t]+${WORDS}[ \\t]+${SUFFIX}${DIRECTION}`,
    `(?:${GERMAN_STREET_TWO})[ \\t]+\\d{1,4}[ \\t]?[a-zA-Z]?(?![\\p{L}\\p{N}])`,
    // one-word English streets: Kingsway, Broadway, Southgate
    `${NUMBER}[ \\t]+\\p{Lu}\\p{Ll}+(?:way|gate)`,
    `${NUMBER},?[ \\t]+(?:(?:bis|ter)[ \\t]+)?${FRENCH_WAY}[ \\t]+(?:(?:de|du|des|de la|d')[ \\t]*)?${WORDS}`,
    `${SPANISH_WAY}[ \\t]+(?:(?:de|del|de la)[ \\t]+)?${WORDS},?[ \\t]+(?:n[ºo°]\\.?[ \\t]*)?\\d{1,4}(?:,[ \\t]*\\d{1,2}[ºª][ \\t]?[A-Z]?)?`,
  ];
  const STREET = new RegExp(`(?<![\\p{L}\\p{N}])(?:${STREETS.join('|')})(?![\\p{L}\\p{N}])`, 'gu');

  const UK_POSTCODE = '[A-Z]{1,2}\\d[A-Z\\d]?[ \\t]?\\d[A-Z]{2}';
  const LOCALITIES = [
    `(?:${TOWN},?[ \\t]+)?${UK_POSTCODE}`,
    `${TOWN},?[ \\t]+[A-Z]{2}[ \\t]+\\d{5}(?:-\\d{4})?`,
    `(?:[A-Z]{1,2}-)?\\d{5}[ \\t]+${TOWN}`,
    `\\d{4}[ \\t]?[A-Z]{2}[ \\t]+${TOWN}`,
    `(?:B-|L-)?\\d{4}[ \\t]+${TOWN}`,
  ];
  const SEPARATOR = '(?:[ \\t]*,[ \\t]*|[ \\t]*\\r?\\n[ \\t]*|[ \\t]+)';
  const LOCALITY = new RegExp(`${SEPARATOR}(?:${LOCALITIES.join('|')})(?![\\p{L}\\p{N}])`, 'uy');
  // A segment that may stand between street and locality: a district or a unit.
  const MIDDLE = new RegExp(`(?:[ \\t]*,[ \\t]*|[ \\t]*\\r?\\n[ \\t]*)(?:${UNIT_NAME}|${TOWN})(?![\\p{L}\\p{N}])`, 'uy');
  const ADDRESS_CUE = /(?<![\p{L}\p{N}])(?:(?:home|postal|mailing|street|billing|residential|current|previous)[ \t]+)?(?:address|addr\.|anschrift|adresse|wohnort|direcci[óo]n|domicilio|indirizzo|adres)[ \t]*:?/giu;

  function localityAt(text, index) {
    LOCALITY.lastIndex = index;
    const m = LOCALITY.exec(text);
    return m ? index + m[0].length : -1;
  }

  // [{kind: 'address', text, start, end, confidence}]; text may run over line breaks.
  function findAddresses(text) {
    const found = [];
    STREET.lastIndex = 0;
    for (const m of text.matchAll(STREET)) {
      const start = m.index;
      let end = start + m[0].length;
      if (found.some((f) => start < f.end)) continue;
      let localityEnd = localityAt(text, end);
      if (localityEnd < 0) {
        MIDDLE.lastIndex = end;
        const middle = MIDDLE.exec(text);
        if (middle) localityEnd = localityAt(text, end + middle[0].length);
      }
      const cue = edges.cueBefore(text, start, ADDRESS_CUE, 8);
      let confidence = cue ? 0.85 : 0.7;
      if (localityEnd > 0) {
        end = localityEnd;
        confidence = 0.95;
      }
      found.push({ kind: 'address', text: text.slice(start, end), start, end, confidence });
    }
    return found;
  }

  const api = { findAddresses };
  if (typeof module === 'object' && module.exports) module.exports = api;
  else (root.Sablemark = root.Sablemark || {}).addresses = api;
})(typeof globalThis !== 'undefined' ? globalThis : this);
