// Lines over the model: the edges of its triangles, and its bones.

import * as THREE from 'three';

const WIRE = new THREE.MeshBasicMaterial({
  color: 0xcfe3ff, wireframe: true, transparent: true, opacity: 0.28, depthWrite: false, polygonOffset: true,
  polygonOffsetFactor: -1,
});

// A second mesh that moves with the first.
function wireOf(mesh) {
  const wire = mesh.isSkinnedMesh ? new THREE.SkinnedMesh(mesh.geometry, WIRE) : new THREE.Mesh(mesh.geometry, WIRE);
  if (mesh.isSkinnedMesh) {
    wire.bind(mesh.skeleton, mesh.bindMatrix);
  }
  if (mesh.morphTargetInfluences) {
    wire.morphTargetInfluences = mesh.morphTargetInfluences;
  }
  wire.frustumCulled = false;
  wire.raycast = () => {};
  mesh.add(wire);
  return wire;
}

export class Wires {
  constructor(model) {
    this.model = model;
  }

  show(isShown) {
    this.wires ??= isShown ? this.model.meshes.map(wireOf) : undefined;
    this.wires?.forEach((wire) => { wire.visible = isShown; });
  }
}

export class BoneLines {
  constructor(model, scene) {
    this.bones = model.bones;
    this.joined = model.bones.filter((bone) => bone.parent?.userData.kind === 'bone');
    const lines = new THREE.BufferGeometry();
    lines.setAttribute('position', new THREE.Float32BufferAttribute(new Float32Array(6 * this.joined.length), 3));
    const points = new THREE.BufferGeometry();
    points.setAttribute('position', new THREE.Float32BufferAttribute(new Float32Array(3 * this.bones.length), 3));
    const look = { color: 0x5fe3c0, depthTest: false, transparent: true };
    this.group = new THREE.Group();
    this.group.add(new THREE.LineSegments(lines, new THREE.LineBasicMaterial(look)));
    this.group.add(new THREE.Points(points, new THREE.PointsMaterial({ ...look, size: 6, sizeAttenuation: false })));
    this.group.children.forEach((child) => Object.assign(child, { frustumCulled: false, renderOrder: 2 }));
    this.group.visible = false;
    scene.add(this.group);
  }

  show(isShown) {
    this.group.visible = isShown;
    this.update();
  }

  update() {
    if (!this.group.visible) {
      return;
    }
    const place = new THREE.Vector3();
    const put = (attribute, number, bone) => {
      place.setFromMatrixPosition(bone.matrixWorld);
      attribute.setXYZ(number, place.x, place.y, place.z);
      attribute.needsUpdate = true;
    };
    const [lines, points] = this.group.children.map((child) => child.geometry.attributes.position);
    this.bones[0]?.parent.updateWorldMatrix(true, true);
    this.joined.forEach((bone, i) => {
      put(lines, 2 * i, bone.parent);
      put(lines, 2 * i + 1, bone);
    });
    this.bones.forEach((bone, i) => put(points, i, bone));
  }
}
