#!/usr/bin/env node
// Exports all examples, turns every model into glTF, and asks Khronos' validator: it may find no error and nothing to
// warn of.
// Usage: scripts/check-glb.mjs PROGRAM PACKAGES [SCENE...]; PACKAGES holds what npm has installed.

import { spawnSync } from 'node:child_process';
import { mkdtempSync, mkdirSync, readdirSync, readFileSync, rmSync } from 'node:fs';
import { createRequire } from 'node:module';
import { tmpdir } from 'node:os';
import { dirname, join, resolve } from 'node:path';
import { fileURLToPath } from 'node:url';

const [program, packages, ...named] = process.argv.slice(2);
const validator = createRequire(resolve(packages, 'package.json'))('gltf-validator');
const examples = join(dirname(fileURLToPath(import.meta.url)), '..', 'examples');
const scenes = named.length ? named
  : readdirSync(examples).filter((name) => name.endsWith('.scene.json')).map((name) => join(examples, name));

function modelsIn(folder) {
  return readdirSync(folder, { withFileTypes: true, recursive: true }).filter((entry) => entry.name.endsWith('.mdl'))
    .map((entry) => join(entry.parentPath ?? entry.path, entry.name));
}

async function faultsOf(model, out) {
  const run = spawnSync(program, ['gltf', model, out], { encoding: 'utf8' });
  if (run.status !== 0) {
    return [run.stderr];
  }
  const { issues } = await validator.validateBytes(new Uint8Array(readFileSync(out)));
  return issues.messages.filter(({ severity }) => severity < 2)
    .map(({ code, message, pointer }) => `${code} at ${pointer}: ${message}`);
}

let models = 0;
let faults = 0;
for (const scene of scenes) {
  const folder = mkdtempSync(join(tmpdir(), 'check-glb-'));
  mkdirSync(join(folder, 'game'));
  const flags = ['--resource-root', join(folder, 'game'), '--config', join(folder, 'config'), '--quiet'];
  spawnSync(program, ['export', scene, ...flags]);
  if (modelsIn(folder).length === 0) {
    spawnSync(program, ['export', scene, ...flags, '--as-model', 'test/model']);
  }
  for (const model of modelsIn(folder)) {
    models += 1;
    for (const fault of await faultsOf(model, join(folder, 'out.glb'))) {
      console.log(`${scene}: ${model.slice(folder.length)}: ${fault}`);
      faults += 1;
    }
  }
  rmSync(folder, { recursive: true });
}
console.log(`${models} models, ${faults} faults`);
process.exit(faults || !models ? 1 : 0);
