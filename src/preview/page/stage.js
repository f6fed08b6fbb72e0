// The picture: renderer, camera, light and floor. It is drawn anew only when something has changed.

import * as THREE from 'three';
import { OrbitControls } from 'three/addons/controls/OrbitControls.js';

const BACKGROUND = 0x16191d;
const SUN = new THREE.Vector3(3, 6, 4);
const SUN_OF_SHADOWS = new THREE.Vector3(-3, 5, 3);  // from aside, as behind the camera it would hide them

export class Stage {
  constructor(canvas) {
    this.renderer = new THREE.WebGLRenderer({ canvas, antialias: true });
    this.renderer.setPixelRatio(Math.min(window.devicePixelRatio, 2));
    this.renderer.shadowMap.enabled = true;
    this.scene = new THREE.Scene();
    this.scene.background = new THREE.Color(BACKGROUND);
    this.camera = new THREE.PerspectiveCamera(35, 1, 0.01, 1000);
    this.controls = new OrbitControls(this.camera, canvas);
    this.controls.addEventListener('change', () => this.touch());
    this.everyFrame = [];
    this.addLight();
    new ResizeObserver(() => this.resize()).observe(canvas.parentElement);
    this.resize();
    this.timer = new THREE.Timer();
    this.renderer.setAnimationLoop(() => this.draw());
  }

  addLight() {
    const sky = new THREE.HemisphereLight(0xdfe8f5, 0x5a544b, 2.1);
    this.sun = new THREE.DirectionalLight(0xfff1de, 2.9);
    const fill = new THREE.DirectionalLight(0xbfd4ff, 0.9);
    this.sun.position.copy(SUN);
    fill.position.set(-4, 2, -3);
    this.scene.add(sky, this.sun, this.sun.target, fill);
  }

  // A floor of squares of a metre, or as many metres as a large model needs.
  addFloor(size) {
    const cell = 10 ** Math.max(-1, Math.ceil(Math.log10(size / 12)));
    const cells = Math.max(8, 2 * Math.ceil(size / cell));
    this.floor = new THREE.GridHelper(cells * cell, cells, 0x47505b, 0x2a3037);
    this.scene.add(this.floor);
    this.ground = new THREE.Mesh(new THREE.PlaneGeometry(cells * cell, cells * cell).rotateX(-Math.PI / 2),
      new THREE.MeshStandardMaterial({ color: 0x3c434b, roughness: 1, polygonOffset: true, polygonOffsetFactor: 1 }));
    Object.assign(this.ground, { receiveShadow: true, visible: false });
    this.scene.add(this.ground);
  }

  // The sun's shadows of all that lies in the box, on a ground, as the dark of the background shows none.
  showShadows(isShown, box) {
    this.ground.visible = this.sun.castShadow = isShown;
    const radius = Math.max(box.getSize(new THREE.Vector3()).length(), 0.01);
    box.getCenter(this.sun.target.position);
    this.sun.position.copy(isShown ? SUN_OF_SHADOWS : SUN).setLength(2 * radius).add(this.sun.target.position);
    const { shadow } = this.sun;
    Object.assign(shadow.camera, {
      left: -radius, right: radius, bottom: -radius, top: radius, near: radius / 10, far: 4 * radius,
    });
    shadow.camera.updateProjectionMatrix();
    shadow.mapSize.set(2048, 2048);
    shadow.normalBias = radius / 400;
  }

  touch() {
    this.isStale = true;
  }

  resize() {
    const { clientWidth, clientHeight } = this.renderer.domElement.parentElement;
    this.renderer.setSize(clientWidth, clientHeight, false);
    this.camera.aspect = clientWidth / Math.max(clientHeight, 1);
    this.camera.updateProjectionMatrix();
    this.touch();
  }

  fit(box) {
    const center = box.getCenter(new THREE.Vector3());
    const radius = Math.max(box.getSize(new THREE.Vector3()).length() / 2, 0.01);
    const angle = THREE.MathUtils.degToRad(this.camera.fov / 2);
    const away = radius / Math.sin(Math.min(angle, Math.atan(Math.tan(angle) * this.camera.aspect)));
    this.controls.target.copy(center);
    this.camera.position.copy(center).add(new THREE.Vector3(0.62, 0.4, 0.85).normalize().multiplyScalar(away));
    this.camera.near = away / 200;
    this.camera.far = away * 50;
    this.camera.updateProjectionMatrix();
    this.controls.update();
    this.touch();
  }

  draw() {
    this.timer.update();
    const seconds = this.timer.getDelta();
    this.everyFrame.forEach((step) => step(seconds));
    if (this.isStale) {
      this.isStale = false;
      this.renderer.render(this.scene, this.camera);
      document.documentElement.dataset.drawn = Number(document.documentElement.dataset.drawn ?? 0) + 1;
    }
  }
}
