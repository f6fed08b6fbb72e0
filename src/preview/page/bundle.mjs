// Makes the page of one script, one style and no model yet, as C++ text: `node bundle.mjs OUT.cpp`.

import { readFileSync, writeFileSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { createRequire } from 'node:module';

const here = dirname(fileURLToPath(import.meta.url));
const [target, packages] = process.argv.slice(2);
const { buildSync } = createRequire(join(packages, 'package.json'))('esbuild');

const { outputFiles: [script] } = buildSync({
  entryPoints: [join(here, 'main.js')], bundle: true, minify: true, format: 'iife', target: 'es2022', write: false,
  legalComments: 'inline', nodePaths: [join(packages, 'node_modules')], logLevel: 'warning', charset: 'ascii',
});
const style = readFileSync(join(here, 'page.css'), 'utf8').replace(/\s*\n\s*/g, ' ');
const page = readFileSync(join(here, 'page.html'), 'utf8')
  .replace('/*STYLE*/', () => style).replace('/*SCRIPT*/', () => script.text);

// A literal has a bound that is lower than a page is long.
function literals(text) {
  const bytes = Buffer.from(text, 'utf8');
  const pieces = [];
  for (let begin = 0; begin < bytes.length; begin += 4000) {
    const piece = [...bytes.subarray(begin, begin + 4000)].map((byte) => {
      const character = String.fromCharCode(byte);
      return byte < 32 || byte > 126 || '"\\?'.includes(character) ? `\\${byte.toString(8).padStart(3, '0')}` : character;
    }).join('');
    pieces.push(`    {"${piece}", ${Math.min(4000, bytes.length - begin)}},`);
  }
  return pieces.join('\n');
}

const [before, behind] = page.split('/*MODEL*/');
writeFileSync(target, `// Made by bundle.mjs.
#include "preview/page_parts.h"

namespace preview {

const std::vector<std::string_view> kPageBeforeModel{
${literals(before)}
};

const std::vector<std::string_view> kPageBehindModel{
${literals(behind)}
};

}  // namespace preview
`);
