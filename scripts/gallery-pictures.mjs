// Draws the model of each preview page with all its marks, in the middle of its first clip, without the panels.
// Usage: gallery-pictures.mjs CHROMIUM PACKAGES FOLDER PAGE...; NAME.html becomes FOLDER/NAME.png.

import { createRequire } from 'node:module';
import { basename, join, resolve } from 'node:path';
import { pathToFileURL } from 'node:url';

const [chromium, packages, folder, ...pages] = process.argv.slice(2);
const puppeteer = createRequire(resolve(packages, 'package.json'))('puppeteer-core');

// Narrow, so that the panels lie behind their buttons.
const viewport = { width: 420, height: 380 };

async function draw(browser, file) {
  const page = await browser.newPage();
  await page.setViewport(viewport);
  await page.goto(pathToFileURL(resolve(file)).href);
  await page.waitForFunction(() => document.documentElement.dataset.drawn);
  await page.evaluate(() => {
    for (const mark of ['volumes', 'zones', 'supports']) {
      const box = document.getElementById(mark);
      if (!box.disabled && !box.checked) {
        box.click();
      }
    }
    const clips = document.getElementById('clips');
    if (clips.options.length > 1) {
      clips.value = '0';
      clips.dispatchEvent(new Event('change'));
      const scrub = document.getElementById('scrub');
      scrub.value = String(Number(scrub.max) / 4);
      scrub.dispatchEvent(new Event('input'));
    }
  });
  await page.evaluate(() => new Promise((done) => { setTimeout(done, 300); }));
  await (await page.$('#picture')).screenshot({ path: join(folder, `${basename(file, '.html')}.png`) });
  await page.close();
}

const browser = await puppeteer.launch({
  executablePath: chromium, headless: true,
  args: ['--no-sandbox', '--lang=en', '--use-gl=angle', '--use-angle=swiftshader', '--enable-unsafe-swiftshader'],
});
for (const file of pages) {
  await draw(browser, file);
}
await browser.close();
