// Tests for generate.js and for the XML files it wrote.
//   node --test tools/cldr/
'use strict';

const test = require('node:test');
const assert = require('node:assert/strict');
const fs = require('fs');
const os = require('os');
const path = require('path');
const gen = require('./generate.js');

const DATA_DIR = path.resolve(__dirname, '..', '..', 'data', 'international');
const REAL_CLDR = path.join(__dirname, 'node_modules', 'cldr-dates-full');

// --- a small CLDR tree on disk, shaped like cldr-dates-full -----------------

const WIDE_MONTHS = ['Eins', 'Zwei', 'Drei', 'Vier', 'Fünf', 'Sechs', 'Sieben', 'Acht', 'Neun', 'Zehn', 'Elf', 'Zwölf'];
const numbered = (names) => Object.fromEntries(names.map((n, i) => [String(i + 1), n]));
// CLDR lists weekdays Sunday first; the generator must turn them Monday first.
const SUNDAY_FIRST = ['sun', 'mon', 'tue', 'wed', 'thu', 'fri', 'sat'];
const byDay = (names) => Object.fromEntries(SUNDAY_FIRST.map((k, i) => [k, names[i]]));

function gregorian(over = {}) {
  return {
    months: {
      format: {
        abbreviated: numbered(WIDE_MONTHS.map((m) => m.slice(0, 3) + '.')),
        wide: numbered(WIDE_MONTHS.map((m) => m + 's')),
      },
      'stand-alone': {
        abbreviated: numbered(WIDE_MONTHS.map((m) => m.slice(0, 3))),
        wide: numbered(WIDE_MONTHS),
      },
    },
    days: {
      format: {
        short: byDay(['Su.', 'Mo.', 'Tu.', 'We.', 'Th.', 'Fr.', 'Sa.']),
        wide: byDay(['Sunday', 'Monday', 'Tuesday', 'Wednesday', 'Thursday', 'Friday', 'Saturday']),
      },
      'stand-alone': {
        short: byDay(['Su.', 'Mo.', 'Tu.', 'We.', 'Th.', 'Fr.', 'Sa.']),
        wide: byDay(['Sunday', 'Monday', 'Tuesday', 'Wednesday', 'Thursday', 'Friday', 'Saturday']),
      },
    },
    ...over,
  };
}

const fakeRoots = [];
test.after(() => {
  for (const root of fakeRoots) fs.rmSync(root, { recursive: true, force: true });
});

function makeCldr(locales) {
  const root = fs.mkdtempSync(path.join(os.tmpdir(), 'cldr-fake-'));
  fakeRoots.push(root);
  fs.writeFileSync(path.join(root, 'package.json'), JSON.stringify({ version: '99.1.0' }));
  for (const [id, { greg = gregorian(), fields = { week: { displayName: 'week' } } }] of Object.entries(locales)) {
    const dir = path.join(root, 'main', id);
    fs.mkdirSync(dir, { recursive: true });
    const wrap = (dates) => JSON.stringify({ main: { [id]: { dates } } });
    fs.writeFileSync(path.join(dir, 'ca-gregorian.json'), wrap({ calendars: { gregorian: greg } }));
    fs.writeFileSync(path.join(dir, 'dateFields.json'), wrap({ fields }));
  }
  return root;
}

// --- reading the generated XML back (its layout is fixed by the generator) ---

function readWeekNames(text) {
  const out = new Map();
  const langRe = /<Language language="([^"]+)" country="([^"]+)">([\s\S]*?)<\/Language>/g;
  const pairRe = (tag) => new RegExp(`<${tag}><shortname name="([^"]*)"/><longname name="([^"]*)"/></${tag}>`, 'g');
  for (const [, lang, country, body] of text.matchAll(langRe)) {
    const pairs = (tag) => [...body.matchAll(pairRe(tag))].map((m) => ({ short: m[1], long: m[2] }));
    out.set(`${lang}_${country}`, { months: pairs('month'), days: pairs('day'), week: pairs('weekname')[0] });
  }
  return out;
}

function readLanguageList(text) {
  return [...text.matchAll(/<Language language="([^"]+)" country="([^"]+)"\/>/g)].map((m) => `${m[1]}_${m[2]}`);
}

// --- small pieces ------------------------------------------------------------

test('weekday short names lose a trailing abbreviation dot only', () => {
  assert.equal(gen.weekdayShortName('Mo.'), 'Mo');
  assert.equal(gen.weekdayShortName('lu'), 'lu');
  assert.equal(gen.weekdayShortName('a.b.'), 'a.b');
  assert.equal(gen.weekdayShortName('.'), '.', 'a lone dot is kept rather than emptied');
});

test('capitalise upper-cases the first letter by the language rules', () => {
  assert.equal(gen.capitalise('semaine', 'fr'), 'Semaine');
  assert.equal(gen.capitalise('ilk', 'tr'), 'İlk');
  assert.equal(gen.capitalise('ilk', 'en'), 'Ilk');
  assert.equal(gen.capitalise('тиждень', 'uk'), 'Тиждень');
  assert.equal(gen.capitalise('𐐨x', 'en'), '𐐀x', 'a letter outside the BMP is not split');
  assert.equal(gen.capitalise('', 'en'), '');
});

test('xmlEscape covers the five XML specials', () => {
  assert.equal(gen.xmlEscape(`a&b<c>"d'`), 'a&amp;b&lt;c&gt;&quot;d&apos;');
});

test('locale names must be language_COUNTRY', () => {
  assert.deepEqual(gen.splitLocale('de_AT'), { language: 'de', country: 'AT' });
  for (const bad of ['de-AT', 'DE_at', 'de', 'de_AT_x', '']) {
    assert.throws(() => gen.splitLocale(bad), /bad locale name/, bad);
  }
});

test('contextName prefers stand-alone and falls back to format', () => {
  const block = {
    'stand-alone': { wide: { 1: 'styczeń', 2: '  ' } },
    format: { wide: { 1: 'stycznia', 2: 'lutego', 3: 'marca' }, short: { 1: 'x' } },
  };
  assert.equal(gen.contextName(block, 'wide', '1', 'm'), 'styczeń');
  assert.equal(gen.contextName(block, 'wide', '2', 'm'), 'lutego', 'blank stand-alone counts as missing');
  assert.equal(gen.contextName(block, 'short', '1', 'm'), 'x', 'whole stand-alone width missing');
  assert.throws(() => gen.contextName(block, 'wide', '4', 'month'), /no wide name for month 4/);
});

test('cldrIdFor uses the regional file when CLDR has one, the language otherwise', () => {
  const root = makeCldr({ de: {}, 'de-AT': {} });
  assert.equal(gen.cldrIdFor(root, 'de_AT'), 'de-AT');
  assert.equal(gen.cldrIdFor(root, 'de_DE'), 'de');
  assert.throws(() => gen.cldrIdFor(root, 'xx_YY'), /neither xx-YY nor xx/);
});

// --- one language --------------------------------------------------------------

test('buildLanguage: stand-alone months, Monday-first days, CLDR week words', () => {
  const root = makeCldr({ xx: { fields: { week: { displayName: 'week' }, 'week-short': { displayName: 'wk.' } } } });
  const e = gen.buildLanguage(root, 'xx_YY');
  assert.equal(e.cldrId, 'xx');
  assert.equal(e.months.length, 12);
  assert.deepEqual(e.months[0], { short: 'Ein', long: 'Eins' });
  assert.deepEqual(e.months[11], { short: 'Zwö', long: 'Zwölf' });
  assert.deepEqual(e.days.map((d) => d.short), ['Mo', 'Tu', 'We', 'Th', 'Fr', 'Sa', 'Su']);
  assert.equal(e.days[0].long, 'Monday');
  assert.equal(e.days[6].long, 'Sunday');
  assert.deepEqual(e.week, { short: 'Wk.', long: 'Week' });
});

test('buildLanguage: curated week words win, short falls back to wide', () => {
  const root = makeCldr({ de: { fields: { week: { displayName: 'Woche' } } }, zz: { fields: { week: { displayName: 'uge' } } } });
  assert.deepEqual(gen.buildLanguage(root, 'de_DE').week, { short: 'KW', long: 'Kalenderwoche' });
  assert.deepEqual(gen.buildLanguage(root, 'zz_ZZ').week, { short: 'Uge', long: 'Uge' });
  const none = makeCldr({ zz: { fields: {} } });
  assert.throws(() => gen.buildLanguage(none, 'zz_ZZ'), /no "week" field/);
});

test('buildLanguage refuses incomplete or ambiguous CLDR data', () => {
  const g = gregorian();
  delete g.months['stand-alone'].wide['7'];
  delete g.months.format.wide['7'];
  assert.throws(() => gen.buildLanguage(makeCldr({ xx: { greg: g } }), 'xx_YY'), /no wide name for xx_YY \(CLDR xx\) month 7/);

  const dup = gregorian();
  dup.days['stand-alone'].short.tue = 'Mo';
  assert.throws(() => gen.buildLanguage(makeCldr({ xx: { greg: dup } }), 'xx_YY'), /short day name "Mo" appears twice/);
});

test('validateLanguage counts months and days', () => {
  const pair = (s) => ({ short: s, long: s + s });
  const ok = {
    locale: 'xx_YY',
    months: Array.from({ length: 12 }, (_, i) => pair('m' + i)),
    days: Array.from({ length: 7 }, (_, i) => pair('d' + i)),
    week: { short: 'W', long: 'Week' },
  };
  assert.doesNotThrow(() => gen.validateLanguage(ok));
  assert.throws(() => gen.validateLanguage({ ...ok, months: ok.months.slice(1) }), /11 months, want 12/);
  assert.throws(() => gen.validateLanguage({ ...ok, days: [...ok.days, pair('d7')] }), /8 days, want 7/);
  assert.throws(() => gen.validateLanguage({ ...ok, days: [{ short: '', long: 'x' }, ...ok.days.slice(1)] }), /day 1 has no short name/);
  assert.throws(() => gen.validateLanguage({ ...ok, week: { short: 'W', long: '' } }), /no calendar-week words/);
});

// --- whole output ----------------------------------------------------------------

test('generate sorts locales, escapes names and writes both files in step', () => {
  const g = gregorian();
  g.months['stand-alone'].wide['1'] = 'Jan & "Co"';
  const root = makeCldr({ xx: { greg: g }, aa: {}, 'aa-BB': {} });
  const { entries, files } = gen.generate(root, ['xx_YY', 'aa_CC', 'aa_BB', 'xx_YY']);
  assert.deepEqual(entries.map((e) => e.locale), ['aa_BB', 'aa_CC', 'xx_YY']);
  assert.deepEqual(entries.map((e) => e.cldrId), ['aa-BB', 'aa', 'xx']);

  const langs = files['CalendarLanguages.xml'];
  const weeks = files['CalendarWeekNames.xml'];
  for (const text of [langs, weeks]) {
    assert.match(text, /^<\?xml version="1.0" encoding="UTF-8"\?>\n<!-- generated by tools\/cldr\/generate.js; words from the Unicode CLDR \(cldr-dates-full 99.1.0\), Unicode licence -->\n/);
  }
  assert.deepEqual(readLanguageList(langs), ['aa_BB', 'aa_CC', 'xx_YY']);
  assert.deepEqual([...readWeekNames(weeks).keys()], ['aa_BB', 'aa_CC', 'xx_YY']);
  assert.ok(weeks.includes('<longname name="Jan &amp; &quot;Co&quot;"/>'));
  assert.equal(readWeekNames(weeks).get('xx_YY').months.length, 12);
});

// --- the files in data/international ----------------------------------------------

test('data files: same locales in both, sorted, each complete', () => {
  const list = readLanguageList(fs.readFileSync(path.join(DATA_DIR, 'CalendarLanguages.xml'), 'utf8'));
  const names = readWeekNames(fs.readFileSync(path.join(DATA_DIR, 'CalendarWeekNames.xml'), 'utf8'));
  assert.deepEqual(list, [...gen.LOCALES].sort());
  assert.deepEqual([...names.keys()], list);
  for (const [locale, e] of names) {
    assert.equal(e.months.length, 12, locale);
    assert.equal(e.days.length, 7, locale);
    assert.ok(e.week, `${locale} weekname`);
    for (const x of [...e.months, ...e.days, e.week]) {
      assert.ok(x.short.trim() && x.long.trim(), `${locale}: empty name in ${JSON.stringify(x)}`);
    }
    assert.equal(new Set(e.days.map((d) => d.short)).size, 7, `${locale} day short names distinct`);
    assert.equal(new Set(e.months.map((m) => m.long)).size, 12, `${locale} month names distinct`);
  }
});

test('data files: known words for de_DE, fr_FR, en_GB, pl_PL, de_AT', () => {
  const names = readWeekNames(fs.readFileSync(path.join(DATA_DIR, 'CalendarWeekNames.xml'), 'utf8'));
  const de = names.get('de_DE');
  assert.deepEqual(de.months[0], { short: 'Jan', long: 'Januar' });
  assert.deepEqual(de.months[2], { short: 'Mär', long: 'März' });
  assert.deepEqual(de.days[0], { short: 'Mo', long: 'Montag' });
  assert.deepEqual(de.days[6], { short: 'So', long: 'Sonntag' });
  assert.deepEqual(de.week, { short: 'KW', long: 'Kalenderwoche' });
  assert.deepEqual(names.get('de_AT').months[0], { short: 'Jän', long: 'Jänner' });

  const fr = names.get('fr_FR');
  assert.deepEqual(fr.months[7], { short: 'août', long: 'août' });
  assert.deepEqual(fr.months[1], { short: 'févr.', long: 'février' });
  assert.deepEqual(fr.days[0], { short: 'lu', long: 'lundi' });
  assert.deepEqual(fr.days[6], { short: 'di', long: 'dimanche' });
  assert.deepEqual(fr.week, { short: 'Sem.', long: 'Semaine' });

  const en = names.get('en_GB');
  assert.deepEqual(en.months[8], { short: 'Sept', long: 'September' });
  assert.deepEqual(en.days[3], { short: 'Th', long: 'Thursday' });
  assert.deepEqual(en.week, { short: 'Wk', long: 'Week' });
  assert.equal(names.get('en_US').months[8].short, 'Sep');

  const pl = names.get('pl_PL');
  assert.deepEqual(pl.months[0], { short: 'sty', long: 'styczeń' });
  assert.deepEqual(pl.months[11], { short: 'gru', long: 'grudzień' });
  assert.deepEqual(pl.days[2], { short: 'śro', long: 'środa' });
  assert.deepEqual(pl.week, { short: 'Tydz.', long: 'Tydzień' });
});

test('data files match a fresh run over the installed CLDR package', (t) => {
  if (!fs.existsSync(path.join(REAL_CLDR, 'package.json'))) {
    t.skip('cldr-dates-full not installed (npm install --no-package-lock in tools/cldr)');
    return;
  }
  const { files } = gen.generate(REAL_CLDR);
  for (const [name, text] of Object.entries(files)) {
    assert.equal(fs.readFileSync(path.join(DATA_DIR, name), 'utf8'), text, name);
  }
});
