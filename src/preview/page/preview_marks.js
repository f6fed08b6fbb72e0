// What the model's previews hold, as lines: of a camera the pyramid that it sees, of a light its place and direction.

import * as THREE from 'three';

function lines(points, colour) {
  const look = new THREE.LineBasicMaterial({ color: colour, depthTest: false, transparent: true });
  const made = new THREE.LineSegments(new THREE.BufferGeometry().setFromPoints(points), look);
  return Object.assign(made, { renderOrder: 2, frustumCulled: false, raycast: () => {} });
}

function pyramid({ fov, aspect }, length) {
  const y = length * Math.tan(THREE.MathUtils.degToRad(fov / 2));
  const corners = [[-1, -1], [1, -1], [1, 1], [-1, 1]]
    .map(([right, up]) => new THREE.Vector3(right * y * aspect, up * y, -length));
  const edges = corners.flatMap((corner, i) => [new THREE.Vector3(), corner, corner, corners[(i + 1) % 4]]);
  return lines(edges, 0xe08bff);
}

function star(size) {
  const rays = [[1, 0, 0], [0, 1, 0], [0, 0, 1], [1, 1, 1], [1, 1, -1], [1, -1, 1], [1, -1, -1]];
  return rays.flatMap((ray) => [-size, size].map((to) => new THREE.Vector3(...ray).setLength(to)));
}

// The direction is that of the text, in the engine's space.
function arrow(direction, length) {
  const [x, y, z] = direction.split(' ').map(Number);
  const along = new THREE.Vector3(x, z, y).setLength(length);
  const across = new THREE.Vector3(x === 0 && y === 0 ? 1 : -y, 0, x).setLength(length / 12);
  const barb = along.clone().multiplyScalar(0.8);
  return [[0, 0, 0], along, along, barb.clone().add(across), along, barb.clone().sub(across)]
    .map((point) => new THREE.Vector3(...point));
}

// A light without a place comes from afar: its arrow ends at the root.
function light({ position, direction }, size) {
  const points = direction ? arrow(direction, size) : [];
  if (!position) {
    const end = points[1].clone();
    points.forEach((point) => point.sub(end));
  }
  return lines(position ? [...star(size / 6), ...points] : points, 0xffd84a);
}

export class PreviewMarks {
  constructor(model, size) {
    const add = (node, mark) => {
      node.add(mark);
      model.previewLines.push(mark);
    };
    model.cameras.forEach((node) => add(node, pyramid(node, size / 3)));
    model.lights.forEach((node) => add(node, light(node.userData.light, size / 4)));
    this.lines = model.previewLines;
  }

  show(isShown) {
    this.lines.forEach((mark) => { mark.visible = isShown; });
  }
}
