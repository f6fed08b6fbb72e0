// The bar below the picture: which clip, and where in it.

import { $ } from './controls.js';
import { onLanguage, words } from './words.js';

export class Timeline {
  constructor(model, player) {
    this.player = player;
    onLanguage((text) => this.fill(model, text));
    $('clips').addEventListener('change', () => player.choose(Number($('clips').value)));
    $('play').addEventListener('click', () => player.play(!player.isPlaying));
    $('scrub').addEventListener('input', () => {
      player.play(false);
      player.goTo(Number($('scrub').value));
    });
    $('speed').addEventListener('change', () => { player.speed = Number($('speed').value); });
    $('timeline').hidden = model.clips.length === 0;
  }

  fill(model, text) {
    const list = $('clips');
    list.replaceChildren(new Option(text.rest, -1), ...model.clips.map((clip, i) => new Option(clip.name, i)));
    list.value = this.player.number;
    this.refresh();
  }

  refresh() {
    const { player } = this;
    $('clips').value = player.number;
    $('scrub').max = player.lastFrame;
    $('scrub').value = player.frame;
    $('scrub').disabled = $('play').disabled = player.number < 0;
    $('frame').textContent = `${words().frame} ${Math.round(player.frame)} ${words().lastFrame} ${player.lastFrame}`;
    $('play').textContent = player.isPlaying ? '❚❚' : '▶';
    $('play').title = player.isPlaying ? words().pause : words().play;
  }
}
