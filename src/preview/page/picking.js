// From a click to what lies there: the nearest visible triangle of a mesh, a volume, a zone or a support point.

import * as THREE from 'three';

const MOST_PIXELS = 4;  // that the pointer may move in a click

function heaviestBone(mesh, vertices) {
  const { skinIndex, skinWeight } = mesh.geometry.attributes;
  const weights = new Map();
  for (const vertex of vertices) {
    for (let i = 0; i < 4; ++i) {
      const joint = skinIndex.getComponent(vertex, i);
      weights.set(joint, (weights.get(joint) ?? 0) + skinWeight.getComponent(vertex, i));
    }
  }
  const [joint] = [...weights].reduce((best, entry) => (entry[1] > best[1] ? entry : best));
  return mesh.skeleton.bones[joint];
}

export class Picking {
  constructor(stage, model, onPick) {
    this.stage = stage;
    this.model = model;
    this.onPick = onPick;
    this.outline = new THREE.LineLoop(
      new THREE.BufferGeometry().setFromPoints([0, 1, 2].map(() => new THREE.Vector3())),
      new THREE.LineBasicMaterial({ color: 0xffd166, depthTest: false, transparent: true }),
    );
    Object.assign(this.outline, { visible: false, renderOrder: 3, frustumCulled: false });
    stage.scene.add(this.outline);
    const canvas = stage.renderer.domElement;
    canvas.addEventListener('pointerdown', (event) => { this.from = [event.clientX, event.clientY]; });
    canvas.addEventListener('pointerup', (event) => this.release(event));
  }

  release({ clientX, clientY }) {
    const [x, y] = this.from ?? [Infinity, Infinity];
    if (Math.hypot(clientX - x, clientY - y) <= MOST_PIXELS) {
      this.pick(clientX, clientY);
    }
  }

  pick(clientX, clientY) {
    const area = this.stage.renderer.domElement.getBoundingClientRect();
    const caster = new THREE.Raycaster();
    caster.setFromCamera(new THREE.Vector2(
      ((clientX - area.left) / area.width) * 2 - 1, 1 - ((clientY - area.top) / area.height) * 2,
    ), this.stage.camera);
    const marks = Object.values(this.model.marks).flat().flatMap((node) => [node, ...node.children])
      .filter((node) => node.isMesh);
    const candidates = [...this.model.meshes, ...marks].filter((mesh) => this.model.isVisible(mesh));
    const hits = caster.intersectObjects(candidates, false);
    // A volume is in front of all that it holds: the mesh within counts first.
    const hit = hits.find(({ object }) => object.owner.userData.kind === 'mesh') ?? hits[0];
    this.onPick(hit ? this.describe(hit) : undefined);
  }

  describe({ object, face, faceIndex }) {
    const { owner } = object;
    this.draw(object, face);
    if (owner.userData.kind !== 'mesh') {
      return { node: owner };
    }
    const bone = object.isSkinnedMesh ? heaviestBone(object, [face.a, face.b, face.c]) : owner.parent;
    return { node: owner, bone, mesh: object, triangle: faceIndex };
  }

  draw(mesh, face) {
    const corners = [face.a, face.b, face.c].map((vertex) => mesh.localToWorld(
      mesh.getVertexPosition(vertex, new THREE.Vector3()),
    ));
    this.outline.geometry.setFromPoints(corners);
    this.outline.visible = true;
  }

  clear() {
    this.outline.visible = false;
  }
}
