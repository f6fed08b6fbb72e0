// Opens the pages of models in headless Chromium and works all that they have: no message in the console, a picture
// that isn't empty, and each switch changes it.
// Usage: test.mjs CHROMIUM PACKAGES PAGE... [--pictures FOLDER]; each page is NAME.html. Exits with 77 where Chromium
// can't be started at all.

import { createRequire } from 'node:module';
import { basename, join, resolve } from 'node:path';
import { pathToFileURL } from 'node:url';

const [chromium, packages, ...rest] = process.argv.slice(2);
const at = rest.indexOf('--pictures');
const pictures = at >= 0 ? rest[at + 1] : undefined;
const pages = at >= 0 ? rest.slice(0, at) : rest;
const puppeteer = createRequire(resolve(packages, 'package.json'))('puppeteer-core');

const faults = [];
function expect(holds, what) {
  if (!holds) {
    faults.push(what);
    console.log(`fault: ${what}`);
  }
}

// Keeps what the canvas shows now, drawn small: enough to tell two pictures apart, and quick. The number of the picture.
function look() {
  const { stage } = window.preview;
  stage.renderer.render(stage.scene, stage.camera);
  const small = Object.assign(document.createElement('canvas'), { width: 320, height: 200 });
  const context = small.getContext('2d', { willReadFrequently: true });
  context.drawImage(stage.renderer.domElement, 0, 0, small.width, small.height);
  window.looks ??= [];
  return window.looks.push(context.getImageData(0, 0, small.width, small.height).data) - 1;
}

// How many values of two pictures differ.
function difference(page, one, two) {
  return page.evaluate((first, second) => {
    const [a, b] = [window.looks[first], window.looks[second]];
    return a.reduce((count, value, i) => count + (Math.abs(value - b[i]) > 6 ? 1 : 0), 0);
  }, one, two);
}

async function changes(page, name, before, action) {
  await action();
  const after = await page.evaluate(look);
  expect(await difference(page, before, after) > 20, `${name} changes nothing`);
  return after;
}

async function tryPage(browser, file) {
  const page = await browser.newPage();
  const name = basename(file, '.html');
  page.on('console', (message) => expect(false, `${name}: console: ${message.text()}`));
  page.on('pageerror', (error) => expect(false, `${name}: ${error.message}`));
  page.on('request', (request) => expect(/^(file|blob|data):/.test(request.url()), `${name}: asks ${request.url()}`));
  await page.setViewport({ width: 860, height: 460 });
  await page.goto(pathToFileURL(resolve(file)).href);
  await page.waitForFunction(() => document.documentElement.dataset.state && document.documentElement.dataset.drawn);
  const plain = await page.evaluate(look);
  const colours = await page.evaluate((number) => new Set(window.looks[number]).size, plain);
  expect(colours > 40, `${name}: the picture is empty`);
  for (const id of ['volumes', 'zones', 'supports', 'previews', 'shadows', 'skeleton', 'wire', 'grid']) {
    if (await page.$eval(`#${id}`, (box) => !box.disabled)) {
      await changes(page, `${name}: ${id}`, plain, () => page.click(`#${id}`));
      await page.click(`#${id}`);
    }
  }
  for (const mode of ['subMesh', 'palette', 'order', 'normals']) {
    await changes(page, `${name}: colours by ${mode}`, plain, () => page.select('#colours', mode));
  }
  await page.select('#colours', 'material');
  if (await page.$('#level-1')) {
    await changes(page, `${name}: level 1`, plain, () => page.click('#level-1'));
    await page.click('#level-0');
  }
  expect(await difference(page, plain, await page.evaluate(look)) === 0, `${name}: what was switched back still shows`);
  await tryClips(page, name, plain);
  await tryPicking(page, name);
  await tryLanguageAndWidth(page, name);
  await page.close();
}

async function tryClips(page, name, plain) {
  if (!await page.$('#clips option[value="0"]')) {
    return;
  }
  await page.select('#clips', await page.evaluate(() => {
    const moved = window.preview.model.clips.map((clip) => clip.tracks.length);
    return String(moved.indexOf(Math.max(...moved)));
  }));
  const middle = await changes(page, `${name}: the middle of a clip`, plain, () => page.evaluate(() => {
    window.preview.player.goTo(window.preview.player.lastFrame / 2);
  }));
  const frame = await page.$eval('#frame', (output) => output.textContent);
  await page.focus('#picture');
  await page.keyboard.press('Space');
  await page.waitForFunction((text) => document.getElementById('frame').textContent !== text, {}, frame);
  await page.keyboard.press('Space');
  expect(await page.evaluate(() => !window.preview.player.isPlaying), `${name}: the space bar stops no clip`);
  await page.select('#clips', '-1');
  expect(await difference(page, middle, await page.evaluate(look)) > 20, `${name}: at rest it stands as in the clip`);
}

async function tryPicking(page, name) {
  const place = await page.evaluate(() => {
    const { model, stage } = window.preview;
    const mesh = model.meshes.find((one) => model.isVisible(one));
    const { left, top, width, height } = stage.renderer.domElement.getBoundingClientRect();
    const p = mesh.localToWorld(mesh.getVertexPosition(mesh.geometry.index.getX(0), mesh.position.clone()))
      .lerp(model.box().getCenter(mesh.position.clone()), 0.1).project(stage.camera);
    return [left + ((p.x + 1) / 2) * width, top + ((1 - p.y) / 2) * height];
  });
  await page.mouse.click(...place);
  const said = await page.$eval('#selected', (box) => box.textContent);
  expect(/Bone.*Sub-mesh.*Material.*Triangle/s.test(said), `${name}: a click tells no triangle: ${said}`);
  expect(await page.$('.row.chosen'), `${name}: a click marks no bone`);
}

async function tryLanguageAndWidth(page, name) {
  await page.keyboard.press('l');
  expect((await page.$eval('#side', (side) => side.textContent)).includes('Детализация')
    || (await page.$eval('#side', (side) => side.textContent)).includes('Скелет'), `${name}: no Russian`);
  await page.keyboard.press('l');
  await page.setViewport({ width: 400, height: 700 });
  const visible = (id) => page.$eval(id, (panel) => getComputedStyle(panel).display !== 'none');
  expect(!await visible('#side'), `${name}: the panels hide a narrow screen`);
  await page.click('#open-side');
  expect(await visible('#side'), `${name}: a narrow screen has no panel`);
  expect(await page.evaluate(() => document.documentElement.scrollWidth <= 400), `${name}: wider than the screen`);
}

async function draw(browser, file, prepare) {
  const page = await browser.newPage();
  await page.setViewport({ width: 1180, height: 720 });
  await page.goto(pathToFileURL(resolve(file)).href);
  await page.waitForFunction(() => document.documentElement.dataset.drawn);
  await prepare(page);
  await page.evaluate(() => new Promise((done) => { setTimeout(done, 300); }));
  await page.screenshot({ path: join(pictures, `preview-${basename(file, '.html')}.png`) });
  await page.close();
}

let browser;
try {
  browser = await puppeteer.launch({
    executablePath: chromium, headless: true,
    args: ['--no-sandbox', '--lang=en', '--use-gl=angle', '--use-angle=swiftshader', '--enable-unsafe-swiftshader'],
  });
} catch (error) {
  console.log(`Chromium can't be started: ${error.message}`);
  process.exit(77);
}
const views = {
  // A skin by the bones of its palettes, with its edges.
  bones: async (page) => {
    await page.select('#colours', 'palette');
    await page.click('#wire');
    await page.click('#volumes');
  },
  marks: async (page) => {
    await page.click('#volumes');
    await page.click('#zones');
    await page.click('#supports');
    await page.click('.branch .branch .name');
  },
};
for (const file of pages) {
  if (pictures) {
    await draw(browser, file, async (page) => {
      const isSkinned = await page.evaluate(() => window.preview.model.meshes.some((mesh) => mesh.isSkinnedMesh));
      await (isSkinned ? views.bones : views.marks)(page);
    });
  } else {
    await tryPage(browser, file);
  }
}
await browser.close();
console.log(`${pages.length} pages, ${faults.length} faults`);
process.exit(faults.length ? 1 : 0);
