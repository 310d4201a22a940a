// Check digits and validity rules of the numbers that the detectors look for. Pure functions
// over plain text; each takes the number without separators unless it says otherwise.
(function (root) {
  'use strict';

  // Payment card numbers: the Luhn check over all digits, check digit last.
  function luhnValid(digits) {
    if (!/^\d+$/.test(digits)) return false;
    let sum = 0;
    for (let i = 0; i < digits.length; i++) {
      let d = digits.charCodeAt(digits.length - 1 - i) - 48;
      if (i % 2 === 1) {
        d *= 2;
        if (d > 9) d -= 9;
      }
      sum += d;
    }
    return sum % 10 === 0;
  }

  // Length of the IBAN of each country that issues them.
  const IBAN_LENGTHS = {
    AD: 24, AE: 23, AL: 28, AT: 20, AZ: 28, BA: 20, BE: 16, BG: 22, BH: 22, BR: 29, BY: 28,
    CH: 21, CR: 22, CY: 28, CZ: 24, DE: 22, DK: 18, DO: 28, EE: 20, EG: 29, ES: 24, FI: 18,
    FO: 18, FR: 27, GB: 22, GE: 22, GI: 23, GL: 18, GR: 27, GT: 28, HR: 21, HU: 28, IE: 22,
    IL: 23, IQ: 23, IS: 26, IT: 27, JO: 30, KW: 30, KZ: 20, LB: 28, LC: 32, LI: 21, LT: 20,
    LU: 20, LV: 21, MC: 27, MD: 24, ME: 22, MK: 19, MR: 27, MT: 31, MU: 30, NL: 18, NO: 15,
    PK: 24, PL: 28, PS: 29, PT: 25, QA: 29, RO: 24, RS: 22, SA: 24, SC: 31, SE: 24, SI: 19,
    SK: 24, SM: 27, ST: 25, SV: 28, TL: 23, TN: 24, TR: 26, UA: 29, VA: 22, VG: 24, XK: 20,
  };

  function ibanLength(countryCode) {
    return IBAN_LENGTHS[countryCode] || 0;
  }

  // Remainder of a long decimal text by m, computed in chunks so no precision is lost.
  function decimalMod(text, m) {
    let rest = 0;
    for (let i = 0; i < text.length; i += 7) {
      rest = Number(String(rest) + text.slice(i, i + 7)) % m;
    }
    return rest;
  }

  // IBAN: upper-case, no spaces. Right length for its country and mod-97 remainder 1 once the
  // first four characters are moved to the end and letters are counted from A = 10.
  function ibanValid(compact) {
    if (!/^[A-Z]{2}\d{2}[A-Z0-9]+$/.test(compact)) return false;
    if (compact.length !== ibanLength(compact.slice(0, 2))) return false;
    const moved = compact.slice(4) + compact.slice(0, 4);
    const numeric = moved.replace(/[A-Z]/g, (c) => String(c.charCodeAt(0) - 55));
    return decimalMod(numeric, 97) === 1;
  }

  // US social security number: area 000, 666 and 900-999, group 00 and serial 0000 are never
  // issued; 078-05-1120 is the well-known specimen printed on sample cards.
  function ssnValid(area, group, serial) {
    if (area === '000' || area === '666' || area[0] === '9') return false;
    if (group === '00' || serial === '0000') return false;
    return !(area === '078' && group === '05' && serial === '1120');
  }

  // UK National Insurance number: two prefix letters (some letters and pairs never issued),
  // six digits, suffix A-D.
  function ninoValid(prefix, suffix) {
    if (!/^[A-CEGHJ-PR-TW-Z][A-CEGHJ-NPR-TW-Z]$/.test(prefix)) return false;
    if (['BG', 'GB', 'KN', 'NK', 'NT', 'TN', 'ZZ'].includes(prefix)) return false;
    return /^[A-D]$/.test(suffix);
  }

  const DNI_LETTERS = 'TRWAGMYFPDXBNJZSQVHLCKE';

  // Spanish DNI (8 digits) or NIE (X, Y or Z and 7 digits) with its control letter.
  function spanishIdValid(number, letter) {
    let digits = number;
    if (/^[XYZ]\d{7}$/.test(number)) digits = 'XYZ'.indexOf(number[0]) + number.slice(1);
    else if (!/^\d{8}$/.test(number)) return false;
    return DNI_LETTERS[Number(digits) % 23] === letter;
  }

  // French social security number: 13 digits and a key of 97 minus their remainder by 97.
  function nirValid(digits13, key) {
    if (!/^[12]\d{12}$/.test(digits13) || !/^\d{2}$/.test(key)) return false;
    const month = Number(digits13.slice(3, 5));
    if (!((month >= 1 && month <= 12) || (month >= 20 && month <= 42) || month >= 50)) {
      return false;
    }
    return 97 - decimalMod(digits13, 97) === Number(key);
  }

  // Belgian national number yymmddsss with its two check digits; people born from 2000 on
  // have 2 put before the nine digits for the check.
  function belgianIdValid(digits9, check) {
    const month = Number(digits9.slice(2, 4));
    const day = Number(digits9.slice(4, 6));
    if (month > 12 || day > 31) return false;
    const key = Number(check);
    return 97 - decimalMod(digits9, 97) === key || 97 - decimalMod('2' + digits9, 97) === key;
  }

  const api = {
    luhnValid, ibanLength, ibanValid, ssnValid, ninoValid, spanishIdValid, nirValid,
    belgianIdValid,
  };
  if (typeof module === 'object' && module.exports) module.exports = api;
  else (root.Sablemark = root.Sablemark || {}).checksums = api;
})(typeof globalThis !== 'undefined' ? globalThis : this);
