// The page: puts picture, model and controls together.

import * as THREE from 'three';
import { BoneTree } from './bone_tree.js';
import { Colouring } from './colouring.js';
import { $, bindColours, bindKeys, bindLevels, bindPanels, bindSwitch, translatePage } from './controls.js';
import { Model } from './model.js';
import { Picking } from './picking.js';
import { Player } from './player.js';
import { PreviewMarks } from './preview_marks.js';
import { Selection } from './selection.js';
import { Stage } from './stage.js';
import { Timeline } from './timeline.js';
import { BoneLines, Wires } from './wires.js';
import { onLanguage, words } from './words.js';

function showModel(model) {
  const stage = new Stage($('picture'));
  stage.scene.add(model.root);
  const box = model.box();
  stage.addFloor(box.getSize(new THREE.Vector3()).length());
  const fit = () => stage.fit(model.box());
  fit();
  const lines = new BoneLines(model, stage.scene);
  const selection = new Selection($('selected'));

  let timeline;
  const player = new Player(model, () => {
    timeline?.refresh();
    lines.update();
    picking?.clear();
    stage.touch();
  });
  timeline = new Timeline(model, player);
  const axes = new THREE.AxesHelper(box.getSize(new THREE.Vector3()).length() / 10);
  axes.material.depthTest = false;
  const choose = (picked) => {
    selection.show(picked);
    const bone = picked?.bone ?? (picked?.node.userData.kind === 'bone' ? picked.node : picked?.node.parent);
    tree.mark(bone);
    axes.removeFromParent();
    if (picked?.node.userData.kind === 'bone') {
      picking.clear();
      bone.add(axes);
    }
    stage.touch();
  };
  const tree = new BoneTree($('bones'), model, (bone) => choose({ node: bone }));
  const picking = new Picking(stage, model, (picked) => {
    if (!picked) {
      picking.clear();
    }
    choose(picked);
  });

  bindView(model, stage, lines);
  bindKeys(player, fit);
  bindPanels();
  $('fit').addEventListener('click', fit);
  stage.everyFrame.push((seconds) => player.step(seconds));
  onLanguage((text) => {
    $('totals').textContent = text.totals(model.totals());
    selection.refresh();
    timeline.refresh();
  });
  return { stage, player, model, choose };
}

function bindView(model, stage, lines) {
  const wires = new Wires(model);
  const colouring = new Colouring(model);
  const previews = new PreviewMarks(model, model.box().getSize(new THREE.Vector3()).length());
  const drawn = (apply) => (value) => {
    apply(value);
    stage.touch();
  };
  const { volume, zone, 'support point': support } = model.marks;
  bindSwitch('volumes', false, volume.length > 0, drawn((isOn) => model.showMarks('volume', isOn)));
  bindSwitch('zones', false, zone.length > 0, drawn((isOn) => model.showMarks('zone', isOn)));
  bindSwitch('supports', false, support.length > 0, drawn((isOn) => model.showMarks('support point', isOn)));
  bindSwitch('previews', false, previews.lines.length > 0, drawn((isOn) => previews.show(isOn)));
  bindSwitch('shadows', false, model.meshes.length > 0, drawn((isOn) => stage.showShadows(isOn, model.box())));
  bindSwitch('skeleton', false, true, drawn((isOn) => lines.show(isOn)));
  bindSwitch('wire', false, model.meshes.length > 0, drawn((isOn) => wires.show(isOn)));
  bindSwitch('grid', true, true, drawn((isOn) => { stage.floor.visible = isOn; }));
  bindColours(drawn((mode) => colouring.show(mode)));
  bindLevels(model.highestLevel, drawn((level) => model.showLevel(level)));
}

async function start() {
  translatePage();
  try {
    const model = await Model.read($('model').textContent.trim());
    document.title = $('title').textContent = model.name;
    window.preview = showModel(model);
    document.documentElement.dataset.state = 'ready';
  } catch (error) {
    document.documentElement.dataset.state = 'failed';
    $('title').textContent = words().noModel;
    $('totals').textContent = error.message;
    throw error;
  }
}

start();
