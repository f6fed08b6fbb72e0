// What is said of the thing that was clicked.

import { words } from './words.js';

const OWN = ['kind', 'name', 'gltfExtensions'];

function textOf(value) {
  if (value === true) {
    return '✓';
  }
  // Of what is only there, the name is enough.
  return typeof value !== 'object' ? String(value)
    : JSON.stringify(value).replace(/:true/g, '').replace(/[{}"[\]]/g, '').replace(/[,:]/g, '$& ');
}

function extrasOf(node, left = []) {
  return Object.entries(node.userData).filter(([key]) => !OWN.includes(key) && !left.includes(key));
}

function rowsOf(picked) {
  const text = words();
  const { node, bone, mesh, triangle } = picked;
  if (!mesh) {
    return [[text[node.userData.kind] ?? node.userData.kind, node.userData.name ?? node.name], ...extrasOf(node)];
  }
  const primitive = mesh.geometry.userData;
  return [
    [text.bone, bone.userData.name ?? bone.name],
    [text.mesh, node.userData.mesh],
    [text.level, node.userData.level],
    [text.subMesh, mesh.subMesh],
    [text.material, primitive.material || mesh.material.name],
    [text.triangle, triangle],
    ...(primitive.palette ? [[text.palette, primitive.palette.join(' ')]] : []),
    ...extrasOf(node, ['bone', 'mesh', 'level', 'lod']),
  ];
}

export class Selection {
  constructor(container) {
    this.container = container;
  }

  show(picked) {
    this.picked = picked;
    this.container.replaceChildren();
    if (!picked) {
      this.container.textContent = words().nothing;
      return;
    }
    const list = document.createElement('dl');
    rowsOf(picked).forEach(([name, value]) => {
      const term = document.createElement('dt');
      const said = document.createElement('dd');
      term.textContent = name;
      said.textContent = textOf(value);
      list.append(term, said);
    });
    this.container.append(list);
  }

  refresh() {
    this.show(this.picked);
  }
}
