// The switches, lists and keys of the page.

import { onLanguage, switchLanguage, words } from './words.js';
import { colourings } from './colouring.js';

export const $ = (id) => document.getElementById(id);

// Every element with data-word shows that text; data-title has it as its hint.
export function translatePage() {
  onLanguage((text) => {
    document.querySelectorAll('[data-word]').forEach((place) => { place.textContent = text[place.dataset.word]; });
    document.querySelectorAll('[data-title]').forEach((place) => {
      place.title = text[place.dataset.title];
      place.setAttribute('aria-label', text[place.dataset.title]);
    });
    $('keys-list').replaceChildren(...text.keyHelp.flatMap(([key, meaning]) => {
      const term = document.createElement('dt');
      const said = document.createElement('dd');
      term.textContent = key;
      said.textContent = meaning;
      return [term, said];
    }));
  });
}

export function bindSwitch(id, isOn, isThere, apply) {
  const box = $(id);
  box.checked = isOn && isThere;
  box.disabled = !isThere;
  box.addEventListener('change', () => apply(box.checked));
  apply(box.checked);
}

export function bindColours(apply) {
  const list = $('colours');
  onLanguage((text) => {
    const chosen = list.value || colourings[0];
    list.replaceChildren(...colourings.map((mode) => new Option(text[mode], mode, false, mode === chosen)));
  });
  const show = () => {
    const text = words();
    $('legend').textContent = { order: text.legendOrder, palette: text.legendPalette }[list.value] ?? '';
    apply(list.value);
  };
  list.addEventListener('change', show);
  onLanguage(show);
}

export function bindLevels(highest, apply) {
  const group = $('levels');
  for (let level = 0; level <= highest; ++level) {
    const button = document.createElement('button');
    button.textContent = level;
    button.id = `level-${level}`;
    button.addEventListener('click', () => {
      [...group.children].forEach((other) => other.setAttribute('aria-pressed', String(other === button)));
      apply(level);
    });
    button.setAttribute('aria-pressed', String(level === 0));
    group.append(button);
  }
  $('levels-row').hidden = highest === 0;
}

function toggle(id) {
  if (!$(id).disabled) {
    $(id).click();
  }
}

function nextOption(list, step) {
  list.selectedIndex = (list.selectedIndex + step + list.options.length) % list.options.length;
  list.dispatchEvent(new Event('change'));
}

export function bindKeys(player, fit) {
  const keys = {
    ' ': () => player.play(!player.isPlaying),
    ArrowLeft: () => player.goTo(Math.ceil(player.frame) - 1),
    ArrowRight: () => player.goTo(Math.floor(player.frame) + 1),
    '[': () => nextOption($('clips'), -1),
    ']': () => nextOption($('clips'), 1),
    KeyV: () => toggle('volumes'), KeyZ: () => toggle('zones'), KeyP: () => toggle('supports'),
    KeyE: () => toggle('previews'), KeyS: () => toggle('shadows'),
    KeyK: () => toggle('skeleton'), KeyW: () => toggle('wire'), KeyG: () => toggle('grid'),
    KeyC: () => nextOption($('colours'), 1), KeyF: fit, KeyB: () => $('open-tree').click(),
    KeyL: switchLanguage, '?': () => $('help').click(),
  };
  window.addEventListener('keydown', (event) => {
    if (event.ctrlKey || event.altKey || event.metaKey || event.target.matches('input[type=range], select')) {
      return;
    }
    const level = /^Digit([1-9])$/.exec(event.code)?.[1];
    const action = keys[event.key] ?? keys[event.code] ?? (level && (() => $(`level-${level - 1}`)?.click()));
    if (action) {
      event.preventDefault();
      action();
    }
  });
}

export function bindPanels() {
  const narrow = window.matchMedia('(max-width: 760px)');
  for (const side of ['tree', 'side']) {
    // A narrow screen begins with the picture alone, a wide one with everything.
    $(`open-${side}`).addEventListener('click', () => {
      document.body.classList.toggle(narrow.matches ? `narrow-${side}` : `${side}-shut`);
    });
  }
  $('language').addEventListener('click', switchLanguage);
  $('help').addEventListener('click', () => { $('keys').hidden = !$('keys').hidden; });
  $('close-keys').addEventListener('click', () => { $('keys').hidden = true; });
}
