// The tree of bones, each with what it holds.

function element(name, className, text) {
  const made = document.createElement(name);
  made.className = className;
  made.textContent = text ?? '';
  return made;
}

function holdings(bone) {
  const counts = {};
  bone.children.forEach(({ userData: { kind, level } }) => {
    if (kind && kind !== 'bone' && !(kind === 'mesh' && level > 0)) {
      counts[kind] = (counts[kind] ?? 0) + 1;
    }
  });
  return counts;
}

const SIGNS = { mesh: '▲', volume: '■', 'support point': '●', zone: '◆' };

export class BoneTree {
  constructor(container, model, onChoose) {
    this.rows = new Map();
    this.onChoose = onChoose;
    this.skins = new Map();
    model.meshes.filter((mesh) => mesh.isSkinnedMesh).forEach((mesh) => this.skins.set(mesh.owner.userData.bone, mesh));
    model.bones.filter((bone) => bone.parent?.userData.kind !== 'bone')
      .forEach((root) => container.append(this.branch(root)));
  }

  branch(bone) {
    const below = bone.children.filter((child) => child.userData.kind === 'bone');
    const item = element(below.length ? 'details' : 'div', 'branch');
    item.open = true;
    const row = element(below.length ? 'summary' : 'div', 'row');
    const name = element('button', 'name', bone.userData.name ?? bone.name);
    name.addEventListener('click', (event) => {
      event.preventDefault();
      this.onChoose(bone);
    });
    row.append(name);
    if (bone.userData.joint) {
      row.append(element('span', 'joint', bone.userData.joint));
    }
    const counts = holdings(bone);
    if (this.skins.has(bone.name)) {
      counts.mesh = 1;
    }
    Object.entries(counts).forEach(([kind, count]) => {
      row.append(element('span', `sign ${kind.replace(' ', '-')}`, count > 1 ? `${SIGNS[kind]}${count}` : SIGNS[kind]));
    });
    item.append(row, ...below.map((child) => this.branch(child)));
    this.rows.set(bone, row);
    return item;
  }

  mark(bone) {
    this.rows.forEach((row, own) => row.classList.toggle('chosen', own === bone));
    const row = this.rows.get(bone);
    for (let above = row?.closest('details'); above; above = above.parentElement.closest('details')) {
      above.open = true;
    }
    row?.scrollIntoView({ block: 'nearest' });
    row?.closest('nav').scrollTo({ left: 0 });
  }
}
