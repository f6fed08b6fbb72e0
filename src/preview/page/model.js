// The model in the page: its nodes by what they are in the engine's files (the extras name the kind).

import * as THREE from 'three';
import { GLTFLoader } from 'three/addons/loaders/GLTFLoader.js';

function bytesOf(base64) {
  const text = atob(base64);
  const bytes = new Uint8Array(text.length);
  for (let i = 0; i < text.length; ++i) {
    bytes[i] = text.charCodeAt(i);
  }
  return bytes.buffer;
}

// The meshes of a node, without those of nodes below it.
export function meshesOf(node) {
  return node.isMesh ? [node] : node.children.filter((child) => child.isMesh && !child.userData.kind);
}

export class Model {
  static async read(base64) {
    const gltf = await new GLTFLoader().parseAsync(bytesOf(base64), '');
    const model = new Model(gltf);
    await model.addLevels(gltf.parser);
    model.gather();
    return model;
  }

  constructor(gltf) {
    this.root = gltf.scene;
    this.clips = gltf.animations;
    this.name = gltf.scene.name;
    this.framesPerSecond = gltf.scene.userData.framesPerSecond ?? 30;
    this.levels = [];
  }

  // Further levels of detail hang on nothing in the file; they go beside the first one.
  async addLevels(parser) {
    const found = [];
    this.root.traverse((node) => {
      const ids = node.userData.gltfExtensions?.MSFT_lod?.ids;
      if (ids) {
        found.push([node, ids]);
      }
    });
    for (const [first, ids] of found) {
      const list = [first];
      for (const id of ids) {
        const node = await parser.getDependency('node', id);
        first.parent.add(node);
        list.push(node);
      }
      this.levels.push(list);
    }
    this.showLevel(0);
  }

  gather() {
    this.bones = [];
    this.shown = [];
    this.marks = { volume: [], zone: [], 'support point': [] };
    this.cameras = [];
    this.lights = [];
    this.previewLines = [];
    this.root.traverse((node) => {
      const { kind } = node.userData;
      if (kind === 'bone') {
        this.bones.push(node);
      } else if (kind === 'mesh') {
        this.shown.push(node);
        const { shadow_caster: casts, shadow_receiver: receives } = node.userData;
        meshesOf(node).forEach((mesh, number) => Object.assign(mesh, {
          owner: node, subMesh: number, castShadow: casts !== '0', receiveShadow: receives !== '0',
        }));
      } else if (this.marks[kind]) {
        this.marks[kind].push(node);
        meshesOf(node).forEach((mesh) => Object.assign(mesh, { owner: node, visible: false }));
      } else if (kind === 'camera' && node.isCamera) {
        this.cameras.push(node);
      } else if (kind === 'light') {
        this.lights.push(node);
      }
    });
    // They lie within meshes as often as not.
    this.marks['support point'].flatMap(meshesOf).forEach((mesh) => {
      Object.assign(mesh.material, { depthTest: false, transparent: true });
      mesh.renderOrder = 1;
    });
    this.meshes = this.shown.flatMap(meshesOf);
    // A skin is bent far from the box of its rest.
    this.meshes.forEach((mesh) => { mesh.frustumCulled = false; });
  }

  get highestLevel() {
    return Math.max(0, ...this.levels.flat().map((node) => node.userData.level ?? 0));
  }

  // Where a mesh has no such level, the last one before it stays.
  showLevel(level) {
    for (const list of this.levels) {
      const best = list.filter((node) => (node.userData.level ?? 0) <= level).at(-1) ?? list[0];
      list.forEach((node) => { node.visible = node === best; });
    }
  }

  showMarks(kind, isShown) {
    this.marks[kind].forEach((node) => meshesOf(node).forEach((mesh) => { mesh.visible = isShown; }));
  }

  // What is seen of meshes and marks; where there is nothing, the bones.
  box() {
    const box = new THREE.Box3();
    this.root.updateMatrixWorld(true);
    [...this.meshes, ...Object.values(this.marks).flat().flatMap(meshesOf), ...this.previewLines]
      .filter((drawn) => this.isVisible(drawn)).forEach((drawn) => box.expandByObject(drawn, true));
    this.bones.filter(() => box.isEmpty()).forEach((bone) => {
      box.expandByPoint(new THREE.Vector3().setFromMatrixPosition(bone.matrixWorld).addScalar(0.5));
    });
    return box;
  }

  isVisible(node) {
    return !node || (node.visible && this.isVisible(node.parent));
  }

  totals() {
    const first = this.meshes.filter((mesh) => (mesh.owner.userData.level ?? 0) === 0);
    const triangles = first.reduce((sum, mesh) => sum + mesh.geometry.index.count / 3, 0);
    return { bones: this.bones.length, meshes: this.shown.length, triangles, clips: this.clips.length };
  }
}
