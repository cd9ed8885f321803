#!/usr/bin/env node
// Writes data/international/CalendarLanguages.xml and CalendarWeekNames.xml
// from the Unicode CLDR JSON data in the npm package cldr-dates-full.
//
//   cd tools/cldr && npm install --no-package-lock && node generate.js
//
// Options:
//   --cldr DIR   root of the cldr-dates-full package (default: ./node_modules/cldr-dates-full)
//   --out DIR    where the two XML files go (default: <repo>/data/international)
//   --check      write nothing; exit 1 if the files in --out differ from what would be written
'use strict';

const fs = require('fs');
const path = require('path');

// Every locale that gets calendar words, as language_COUNTRY.
const LOCALES = [
  'bg_BG', 'ca_ES', 'cs_CZ', 'da_DK', 'de_AT', 'de_BE', 'de_CH', 'de_DE', 'de_LU',
  'el_CY', 'el_GR', 'en_AU', 'en_CA', 'en_GB', 'en_IE', 'en_MT', 'en_NZ', 'en_US',
  'es_ES', 'es_MX', 'et_EE', 'fi_FI', 'fr_BE', 'fr_CA', 'fr_CH', 'fr_FR', 'fr_LU',
  'ga_IE', 'hr_HR', 'hu_HU', 'is_IS', 'it_CH', 'it_IT', 'lb_LU', 'lt_LT', 'lv_LV',
  'mt_MT', 'nb_NO', 'nl_BE', 'nl_NL', 'pl_PL', 'pt_BR', 'pt_PT', 'ro_RO', 'ru_RU',
  'sk_SK', 'sl_SI', 'sr_RS', 'sv_FI', 'sv_SE', 'tr_TR', 'uk_UA',
];

// Calendar-week label per language where printed calendars do not use the
// plain CLDR word for "week". Every other language takes CLDR's "week" field
// (wide for the long name, short for the short name), first letter upper-cased.
const WEEK_WORDS = {
  de: { short: 'KW', long: 'Kalenderwoche' },
  en: { short: 'Wk', long: 'Week' },
};

// CLDR keys in the order QDate::dayOfWeek() counts: 1 = Monday ... 7 = Sunday.
const WEEKDAY_KEYS = ['mon', 'tue', 'wed', 'thu', 'fri', 'sat', 'sun'];

function defaultCldrRoot() {
  return path.join(__dirname, 'node_modules', 'cldr-dates-full');
}

function defaultOutDir() {
  return path.resolve(__dirname, '..', '..', 'data', 'international');
}

function splitLocale(locale) {
  const m = /^([a-z]{2,3})_([A-Z]{2})$/.exec(locale);
  if (!m) throw new Error(`bad locale name "${locale}" (want language_COUNTRY, e.g. de_DE)`);
  return { language: m[1], country: m[2] };
}

// CLDR keeps no separate file for a language's default region (de-DE, en-US,
// nb-NO, pt-BR ...): that data is the language's own. So use language-COUNTRY
// when CLDR has it, the bare language otherwise. The JSON files are resolved,
// so each one already holds everything it inherits.
function cldrIdFor(cldrRoot, locale) {
  const { language, country } = splitLocale(locale);
  const main = path.join(cldrRoot, 'main');
  for (const id of [`${language}-${country}`, language]) {
    if (fs.existsSync(path.join(main, id, 'ca-gregorian.json'))) return id;
  }
  throw new Error(`${locale}: CLDR has neither ${language}-${country} nor ${language}`);
}

function loadMain(cldrRoot, id, file) {
  const json = JSON.parse(fs.readFileSync(path.join(cldrRoot, 'main', id, file), 'utf8'));
  if (!json.main || !json.main[id]) throw new Error(`${id}/${file}: no "main.${id}" section`);
  return json.main[id];
}

// One name out of a CLDR months/days block: the stand-alone form (a name on
// its own, as a calendar prints it), the format form where stand-alone lacks it.
function contextName(block, width, key, what) {
  for (const ctx of ['stand-alone', 'format']) {
    const v = block && block[ctx] && block[ctx][width] && block[ctx][width][key];
    if (typeof v === 'string' && v.trim() !== '') return v.trim();
  }
  throw new Error(`no ${width} name for ${what} ${key}`);
}

// Weekday column headers: CLDR's "short" width is the two- or three-letter
// form (Mo, lu, pon, H); some languages end it with an abbreviation dot
// (German "Mo.", Danish "ma.") that a grid header leaves off.
function weekdayShortName(s) {
  const t = s.replace(/\.$/, '');
  return t === '' ? s : t;
}

function capitalise(s, language) {
  if (s === '') return s;
  const first = String.fromCodePoint(s.codePointAt(0));
  return first.toLocaleUpperCase(language) + s.slice(first.length);
}

function weekWords(fields, language) {
  if (WEEK_WORDS[language]) return { ...WEEK_WORDS[language] };
  const wide = fields && fields.week && fields.week.displayName;
  const short = (fields && fields['week-short'] && fields['week-short'].displayName) || wide;
  if (!wide) throw new Error(`no "week" field for ${language}`);
  return { short: capitalise(short.trim(), language), long: capitalise(wide.trim(), language) };
}

function buildLanguage(cldrRoot, locale) {
  const { language, country } = splitLocale(locale);
  const id = cldrIdFor(cldrRoot, locale);
  const greg = loadMain(cldrRoot, id, 'ca-gregorian.json').dates.calendars.gregorian;
  const fields = loadMain(cldrRoot, id, 'dateFields.json').dates.fields;
  const where = `${locale} (CLDR ${id})`;

  const months = [];
  for (let i = 1; i <= 12; i++) {
    months.push({
      short: contextName(greg.months, 'abbreviated', String(i), `${where} month`),
      long: contextName(greg.months, 'wide', String(i), `${where} month`),
    });
  }
  const days = WEEKDAY_KEYS.map((k) => ({
    short: weekdayShortName(contextName(greg.days, 'short', k, `${where} day`)),
    long: contextName(greg.days, 'wide', k, `${where} day`),
  }));
  const entry = { locale, language, country, cldrId: id, months, days, week: weekWords(fields, language) };
  validateLanguage(entry);
  return entry;
}

// A calendar with a missing or doubled name is unusable, so refuse to write one.
function validateLanguage(e) {
  const problems = [];
  const check = (list, n, what) => {
    if (list.length !== n) problems.push(`${list.length} ${what}s, want ${n}`);
    for (const width of ['short', 'long']) {
      const names = list.map((x) => x[width]);
      names.forEach((s, i) => {
        if (typeof s !== 'string' || s.trim() === '') problems.push(`${what} ${i + 1} has no ${width} name`);
      });
      const seen = new Set();
      for (const s of names) {
        if (seen.has(s)) problems.push(`${width} ${what} name "${s}" appears twice`);
        seen.add(s);
      }
    }
  };
  check(e.months, 12, 'month');
  check(e.days, 7, 'day');
  if (!e.week || !e.week.short || !e.week.long) problems.push('no calendar-week words');
  if (problems.length) throw new Error(`${e.locale}: ${problems.join('; ')}`);
}

function xmlEscape(s) {
  return s.replace(/&/g, '&amp;').replace(/</g, '&lt;').replace(/>/g, '&gt;')
    .replace(/"/g, '&quot;').replace(/'/g, '&apos;');
}

function header(version) {
  return '<?xml version="1.0" encoding="UTF-8"?>\n'
    + `<!-- generated by tools/cldr/generate.js; words from the Unicode CLDR (cldr-dates-full ${version}), Unicode licence -->\n`;
}

function nameLine(indent, tag, x) {
  return `${indent}<${tag}><shortname name="${xmlEscape(x.short)}"/><longname name="${xmlEscape(x.long)}"/></${tag}>\n`;
}

function renderLanguages(entries, version) {
  let out = header(version) + '<CalendarLanguages>\n';
  for (const e of entries) out += `  <Language language="${e.language}" country="${e.country}"/>\n`;
  return out + '</CalendarLanguages>\n';
}

function renderWeekNames(entries, version) {
  let out = header(version) + '<CalendarWeekNames>\n';
  for (const e of entries) {
    out += `  <Language language="${e.language}" country="${e.country}">\n`;
    out += '    <monthnames>\n';
    for (const m of e.months) out += nameLine('      ', 'month', m);
    out += '    </monthnames>\n    <daysofweek>\n';
    for (const d of e.days) out += nameLine('      ', 'day', d);
    out += '    </daysofweek>\n';
    out += nameLine('    ', 'weekname', e.week);
    out += '  </Language>\n';
  }
  return out + '</CalendarWeekNames>\n';
}

function cldrVersion(cldrRoot) {
  return JSON.parse(fs.readFileSync(path.join(cldrRoot, 'package.json'), 'utf8')).version;
}

function generate(cldrRoot, locales = LOCALES) {
  const sorted = [...new Set(locales)].sort();
  const entries = sorted.map((l) => buildLanguage(cldrRoot, l));
  const version = cldrVersion(cldrRoot);
  return {
    entries,
    files: {
      'CalendarLanguages.xml': renderLanguages(entries, version),
      'CalendarWeekNames.xml': renderWeekNames(entries, version),
    },
  };
}

function parseArgs(argv) {
  const opts = { cldr: defaultCldrRoot(), out: defaultOutDir(), check: false };
  for (let i = 0; i < argv.length; i++) {
    const a = argv[i];
    if (a === '--check') opts.check = true;
    else if ((a === '--cldr' || a === '--out') && i + 1 < argv.length) opts[a.slice(2)] = argv[++i];
    else throw new Error(`unknown argument "${a}" (use --cldr DIR, --out DIR, --check)`);
  }
  return opts;
}

function main(argv) {
  const opts = parseArgs(argv);
  if (!fs.existsSync(path.join(opts.cldr, 'package.json'))) {
    throw new Error(`no CLDR data at ${opts.cldr}: run "npm install --no-package-lock" in tools/cldr first`);
  }
  const { entries, files } = generate(opts.cldr);
  let stale = 0;
  for (const [name, text] of Object.entries(files)) {
    const file = path.join(opts.out, name);
    if (opts.check) {
      const old = fs.existsSync(file) ? fs.readFileSync(file, 'utf8') : null;
      if (old !== text) {
        console.error(`${file} is out of date`);
        stale++;
      }
    } else {
      fs.mkdirSync(opts.out, { recursive: true });
      fs.writeFileSync(file, text);
      console.log(`wrote ${file}`);
    }
  }
  console.log(`${entries.length} locales, cldr-dates-full ${cldrVersion(opts.cldr)}`);
  return stale ? 1 : 0;
}

module.exports = {
  LOCALES, WEEK_WORDS, WEEKDAY_KEYS, splitLocale, cldrIdFor, contextName, weekdayShortName,
  capitalise, weekWords, buildLanguage, validateLanguage, xmlEscape, renderLanguages,
  renderWeekNames, generate, parseArgs,
};

if (require.main === module) {
  try {
    process.exitCode = main(process.argv.slice(2));
  } catch (err) {
    console.error(`generate.js: ${err.message}`);
    process.exitCode = 2;
  }
}
