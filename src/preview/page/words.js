// The texts of the page in both languages. A text with a place for a number or a name is a function.

const texts = {
  en: {
    bones: 'Bones', view: 'View', selection: 'Selection', show: 'Show', colours: 'Colours', level: 'Level of detail',
    volumes: 'Volumes', zones: 'Zones', supports: 'Support points', previews: 'Previews', shadows: 'Shadows',
    skeleton: 'Skeleton', wire: 'Wire', grid: 'Grid',
    material: 'Material', subMesh: 'Sub-mesh', palette: 'Bone palette', order: 'Vertex-cache order', normals: 'Normals',
    clip: 'Clip', rest: 'At rest', play: 'Play', pause: 'Pause', speed: 'Speed', frame: 'Frame', fit: 'Fit the model',
    nothing: 'Click a triangle, a volume, or a bone in the tree.', bone: 'Bone', mesh: 'Mesh', triangle: 'Triangle',
    volume: 'Volume', zone: 'Zone', 'support point': 'Support point', noModel: 'The model can’t be shown',
    language: 'Русский', keys: 'Keys', close: 'Close', lastFrame: 'of', hidden: 'hidden',
    totals: (t) => `${t.bones} bones · ${t.meshes} meshes · ${t.triangles} triangles · ${t.clips} clips`,
    keyHelp: [['Space', 'play or pause'], ['← →', 'frame back, forward'], ['[ ]', 'clip before, next'],
      ['1 … 9', 'level of detail'], ['V Z P', 'volumes, zones, support points'], ['E S', 'previews, shadows'],
      ['K W G', 'skeleton, wire, grid'], ['C', 'next colours'], ['F', 'fit the model'],
      ['B', 'bones'], ['L', 'language'], ['?', 'these keys']],
    legendOrder: 'from the first triangle of a sub-mesh (blue) to the last (red)',
    legendPalette: 'a hue for each bone of the palette',
  },
  ru: {
    bones: 'Кости', view: 'Вид', selection: 'Выделение', show: 'Показать', colours: 'Цвета', level: 'Детализация',
    volumes: 'Объёмы', zones: 'Зоны', supports: 'Опорные точки', previews: 'Виды', shadows: 'Тени',
    skeleton: 'Скелет', wire: 'Сетка рёбер', grid: 'Пол',
    material: 'Материал', subMesh: 'Под-меш', palette: 'Палитра костей', order: 'Порядок вершинного кэша',
    normals: 'Нормали', clip: 'Анимация', rest: 'Без анимации', play: 'Пуск', pause: 'Пауза', speed: 'Скорость',
    frame: 'Кадр', fit: 'Вся модель', nothing: 'Щёлкните по треугольнику, объёму или кости в дереве.', bone: 'Кость',
    mesh: 'Меш', triangle: 'Треугольник', volume: 'Объём', zone: 'Зона', 'support point': 'Опорная точка',
    noModel: 'Модель не удалось показать', language: 'English', keys: 'Клавиши', close: 'Закрыть', lastFrame: 'из',
    hidden: 'скрыта',
    totals: (t) => `костей ${t.bones} · мешей ${t.meshes} · треугольников ${t.triangles} · анимаций ${t.clips}`,
    keyHelp: [['Пробел', 'пуск и пауза'], ['← →', 'кадр назад, вперёд'], ['[ ]', 'анимация назад, вперёд'],
      ['1 … 9', 'уровень детализации'], ['V Z P', 'объёмы, зоны, опорные точки'], ['E S', 'виды, тени'],
      ['K W G', 'скелет, рёбра, пол'], ['C', 'следующие цвета'], ['F', 'вся модель'],
      ['B', 'кости'], ['L', 'язык'], ['?', 'эта подсказка']],
    legendOrder: 'от первого треугольника под-меша (синий) до последнего (красный)',
    legendPalette: 'свой цвет у каждой кости палитры',
  },
};

let language = navigator.language?.toLowerCase().startsWith('ru') ? 'ru' : 'en';
const listeners = [];

export function words() {
  return texts[language];
}

// Calls back now and with every change of the language.
export function onLanguage(listener) {
  listeners.push(listener);
  listener(words());
}

export function switchLanguage() {
  language = language === 'en' ? 'ru' : 'en';
  document.documentElement.lang = language;
  listeners.forEach((listener) => listener(words()));
}

document.documentElement.lang = language;
