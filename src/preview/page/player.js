// Plays one clip at a time. Time is counted in frames of the file.

import * as THREE from 'three';

export class Player {
  constructor(model, onChange) {
    this.model = model;
    this.mixer = new THREE.AnimationMixer(model.root);
    this.onChange = onChange;
    this.speed = 1;
    this.frame = 0;
    this.number = -1;
    this.isPlaying = false;
  }

  get clip() {
    return this.model.clips[this.number];
  }

  get lastFrame() {
    return this.clip ? (this.clip.userData?.frames ?? Math.round(this.clip.duration * this.model.framesPerSecond) + 1) - 1
      : 0;
  }

  // -1: at rest.
  choose(number) {
    this.action?.stop();
    this.mixer.stopAllAction();
    this.number = number;
    this.action = this.clip ? this.mixer.clipAction(this.clip) : undefined;
    this.action?.play();
    this.isPlaying &&= Boolean(this.clip);
    this.goTo(0);
  }

  goTo(frame) {
    this.frame = Math.min(Math.max(frame, 0), this.lastFrame);
    if (this.action) {
      this.action.paused = false;
      // A loop would take the very end for the beginning.
      const seconds = this.frame / this.model.framesPerSecond;
      this.mixer.setTime(Math.min(seconds, Math.max(this.clip.duration - 1e-6, 0)));
    }
    this.onChange();
  }

  play(isPlaying) {
    this.isPlaying = isPlaying && Boolean(this.clip);
    this.onChange();
  }

  step(seconds) {
    if (!this.isPlaying) {
      return;
    }
    const next = this.frame + seconds * this.speed * this.model.framesPerSecond;
    this.goTo(this.lastFrame > 0 && next > this.lastFrame ? next % this.lastFrame : next);
  }
}
