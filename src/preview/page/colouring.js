// Other colours for the meshes than those of their materials: what the engine's file says of their triangles.

import * as THREE from 'three';

const GOLDEN = 0.618033988749895;  // hues far from one another, however many there are

function hue(number, lightness = 0.42) {
  return new THREE.Color().setHSL((number * GOLDEN) % 1, 0.62, lightness);
}

// The same geometry with colours of its own; what it is made of is shared.
function withColours(geometry, colours) {
  const copy = new THREE.BufferGeometry();
  copy.index = geometry.index;
  Object.entries(geometry.attributes).forEach(([name, attribute]) => copy.setAttribute(name, attribute));
  copy.morphAttributes = geometry.morphAttributes;
  copy.morphTargetsRelative = geometry.morphTargetsRelative;
  copy.setAttribute('color', new THREE.Float32BufferAttribute(colours, 3));
  return copy;
}

function byBone(mesh) {
  const { skinIndex, position } = mesh.geometry.attributes;
  const own = mesh.bonesNumber;
  const colours = [];
  for (let i = 0; i < position.count; ++i) {
    colours.push(...hue(skinIndex ? skinIndex.getX(i) : own));
  }
  return withColours(mesh.geometry, colours);
}

function byOrder(mesh) {
  const geometry = mesh.geometry.toNonIndexed();
  const triangles = geometry.attributes.position.count / 3;
  const colours = [];
  for (let i = 0; i < triangles; ++i) {
    const colour = new THREE.Color().setHSL(0.66 * (1 - i / Math.max(triangles - 1, 1)), 0.75, 0.5);
    colours.push(...colour, ...colour, ...colour);
  }
  return withColours(geometry, colours);
}

function plain(colour, source) {
  return new THREE.MeshStandardMaterial({ color: colour, roughness: 0.85, side: source.side });
}

function coloured(source) {
  return new THREE.MeshStandardMaterial({ vertexColors: true, roughness: 0.85, side: source.side });
}

const modes = {
  material: (mesh, own) => own,
  subMesh: (mesh, own) => ({ geometry: own.geometry, material: plain(hue(mesh.subMesh + 1), own.material) }),
  palette: (mesh, own) => ({ geometry: byBone(mesh), material: coloured(own.material) }),
  order: (mesh, own) => ({ geometry: byOrder(mesh), material: coloured(own.material) }),
  normals: (mesh, own) => ({
    geometry: own.geometry, material: new THREE.MeshNormalMaterial({ side: own.material.side }),
  }),
};

export const colourings = Object.keys(modes);

// Makes what a mode needs when it is first shown.
export class Colouring {
  constructor(model) {
    this.entries = model.meshes.map((mesh) => {
      mesh.bonesNumber = model.bones.findIndex((bone) => bone.name === mesh.owner.parent?.name);
      return { mesh, material: { geometry: mesh.geometry, material: mesh.material } };
    });
  }

  show(mode) {
    for (const entry of this.entries) {
      entry[mode] ??= modes[mode](entry.mesh, entry.material);
      Object.assign(entry.mesh, entry[mode]);
    }
  }
}
