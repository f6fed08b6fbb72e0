// Draws pictures of preview pages without their panels, by a list in JSON:
//   [{"picture": "FILE.png", "size": [width, height], "pages": [{"page": "FILE.html", ...}]}]
// The pages of a picture stand side by side, seen from one place. Beside "page" there may be:
//   "show": the switches to turn on (volumes, zones, supports, previews, shadows); "moment": how much of the first clip
//   has gone by, 0 to 1; "empty": true for the floor without the model; "choose": the bone of that name, or the first
//   volume or zone, of which the page tells beside its picture.
// Usage: draw-pages.mjs CHROMIUM PACKAGES LIST; pngquant must be installed.

import { execFileSync } from 'node:child_process';
import { readFileSync, writeFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { resolve } from 'node:path';
import { pathToFileURL } from 'node:url';

const [chromium, packages, list] = process.argv.slice(2);
const puppeteer = createRequire(resolve(packages, 'package.json'))('puppeteer-core');

const TOLD = 240;  // pixels for what a page tells
const GAP = 4;  // pixels between two pages
const FILLED = 0.92;  // how much of a picture the model fills
const FINER = 2;  // pixels drawn for one of the picture, for smooth edges

// Of the page nothing is left but its picture, and at the right what it tells of the chosen thing.
const style = (width, height) => `
  header, footer, nav, aside > :not(#selected) { display: none !important; }
  #stage { position: fixed; inset: 0 auto auto 0; width: ${width}px; height: ${height}px; }
  aside { position: fixed !important; display: block !important; inset: 0 0 0 auto; width: ${TOLD}px !important; }`;

async function open(browser, { page: file, show = [], moment = null, empty = false, choose = null }, width, height) {
  const page = await browser.newPage();
  await page.setViewport({ width: width + (choose ? TOLD : 0), height, deviceScaleFactor: FINER });
  await page.goto(pathToFileURL(resolve(file)).href);
  await page.waitForFunction(() => document.documentElement.dataset.drawn);
  await page.addStyleTag({ content: style(width, height) });
  await page.waitForFunction((x, y) => {
    const { clientWidth, clientHeight } = document.getElementById('picture');
    return clientWidth === x && clientHeight === y;
  }, {}, width, height);
  await page.evaluate((switches, part, isEmpty, chosen) => {
    const { model, player, stage, choose: tell } = window.preview;
    if (part !== null && model.clips.length > 0) {
      player.choose(0);
      player.goTo(part * player.lastFrame);
    }
    switches.map((id) => document.getElementById(id)).filter((box) => !box.disabled).forEach((box) => box.click());
    stage.resize();
    if (isEmpty) {
      model.root.removeFromParent();
    }
    if (chosen) {
      tell({ node: model.marks[chosen]?.[0] ?? model.bones.find((bone) => bone.name === chosen) });
    }
  }, show, moment, empty, choose);
  return page;
}

// Lower and upper corner of what the page has.
function boxOf(page) {
  return page.evaluate(() => {
    const { min, max } = window.preview.model.box();
    return [[...min], [...max]];
  });
}

function union(boxes) {
  const corner = (which, far) => [0, 1, 2].map((axis) => far(...boxes.map((box) => box[which][axis])));
  return [corner(0, Math.min), corner(1, Math.max)];
}

// The page fits a ball around the box, which leaves much room in a small picture; here the box fills it.
function draw(page, box) {
  return page.evaluate(([low, high], most) => {
    const { model, stage } = window.preview;
    const whole = model.box();
    whole.min.set(...low);
    whole.max.set(...high);
    stage.fit(whole);
    const corners = [low, high].flatMap(([x]) => [low, high].flatMap(([, y]) => [low, high]
      .map(([, , z]) => whole.min.clone().set(x, y, z))));
    for (let step = 0; step < 8; ++step) {
      stage.camera.updateMatrixWorld();
      const reach = Math.max(...corners.flatMap((corner) => {
        const { x, y } = corner.clone().project(stage.camera);
        return [Math.abs(x), Math.abs(y)];
      }));
      stage.camera.position.lerp(stage.controls.target, 1 - reach / most);
    }
    stage.renderer.render(stage.scene, stage.camera);
    return stage.renderer.domElement.toDataURL();
  }, box, FILLED);
}

async function told(page) {
  const panel = await page.$('aside');
  return `data:image/png;base64,${await panel.screenshot({ encoding: 'base64' })}`;
}

// Pieces side by side, each with its width.
async function joined(page, pieces, height) {
  const url = await page.evaluate(async (all, h, gap) => {
    const width = all.reduce((sum, piece) => sum + piece.width + gap, -gap);
    const canvas = Object.assign(document.createElement('canvas'), { width, height: h });
    const context = canvas.getContext('2d');
    context.imageSmoothingQuality = 'high';
    let left = 0;
    for (const piece of all) {
      const image = Object.assign(new Image(), { src: piece.url });
      await image.decode();
      context.drawImage(image, left, 0, piece.width, h);
      left += piece.width + gap;
    }
    return canvas.toDataURL();
  }, pieces, height, GAP);
  return Buffer.from(url.split(',')[1], 'base64');
}

async function make(browser, { picture, size: [width, height], pages: descriptions }) {
  const panels = descriptions.filter(({ choose }) => choose).length;
  const pieceCount = descriptions.length + panels;
  const each = Math.floor((width - GAP * (pieceCount - 1) - TOLD * panels) / descriptions.length);
  const pages = [];
  for (const description of descriptions) {
    pages.push(await open(browser, description, each, height));
  }
  const box = union(await Promise.all(pages.map(boxOf)));
  const pieces = [];
  for (const [i, page] of pages.entries()) {
    await page.bringToFront();
    pieces.push({ url: await draw(page, box), width: each });
    if (descriptions[i].choose) {
      pieces.push({ url: await told(page), width: TOLD });
    }
  }
  if (new Set(pieces.map(({ url }) => url)).size < pieces.length) {
    throw new Error(`${picture}: two of its pages look the same`);
  }
  const png = await joined(pages[0], pieces, height);
  writeFileSync(picture, execFileSync('pngquant', ['--speed', '1', '--strip', '64', '-'], { input: png }));
  await Promise.all(pages.map((page) => page.close()));
}

const browser = await puppeteer.launch({
  executablePath: chromium, headless: true,
  args: ['--no-sandbox', '--lang=en', '--use-gl=angle', '--use-angle=swiftshader', '--enable-unsafe-swiftshader'],
});
for (const picture of JSON.parse(readFileSync(list, 'utf8'))) {
  await make(browser, picture);
}
await browser.close();
