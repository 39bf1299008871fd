// Product model of the document, as the C++ class ModelData writes it.

const IDENTITY = [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0];

const toProduct = row => ({
  definition: row[0], instance: row[1], id: row[2], name: row[3], description: row[4], version: row[5],
  extent: row[6] || null, solids: row[7], shells: row[8], faces: row[9], edges: row[10], shapes: row[11],
  shapeCount: row[12], colours: row[13], unit: row[14], children: [],
});
const toLayer = row => ({ instance: row[0], name: row[1], description: row[2], items: row[3] });
const toProperty = row => ({
  instance: row[0], product: row[1], name: row[2], description: row[3], kind: row[4],
  values: row[5].map(value => ({ name: value[0], value: value[1], unit: value[2], check: value.length > 3
    ? { value: value[3], text: value[4], differs: value[5] === 1, unit: value[6] } : null })), valueCount: row[6],
});
const toColour = row => ({ colour: row[0], transparency: row[1], items: row[2] });
const toAnnotation = row => ({
  instance: row[0], name: row[1], kind: row[2], form: row[3], value: row[4], view: row[5],
});
const toView = row => ({ instance: row[0], name: row[1], kind: row[2] });
const toType = row => ({ name: row[0], count: row[1] });

// Uses of products in assemblies. A million objects would take much memory, and stop the page when it is collected: the
// rows remain text, and each is parsed when it is needed.
class Occurrences {
  constructor() {
    this.length = 0;
    this.texts = []; // of the parts
    this.firsts = []; // occurrence of each part
    this.parents = new Int32Array(1024); // -1: not part of the structure
    this.children = new Int32Array(1024);
    this.positions = new Uint32Array(1024); // in the text of the part
  }

  // Adds the rows of a part: lines that begin with parent and child.
  async addPart(text, turns) {
    this.texts.push(text);
    this.firsts.push(this.length);
    for (let at = 0, end = text.indexOf("\n"); end >= 0; at = end + 1, end = text.indexOf("\n", at)) {
      if (this.length === this.parents.length) {
        for (const name of ["parents", "children", "positions"]) {
          const larger = new this[name].constructor(2 * this.length);
          larger.set(this[name]);
          this[name] = larger;
        }
      }
      // The first character separates the rows, the second begins this one.
      const comma = text.indexOf(",", at + 2);
      this.parents[this.length] = Number(text.slice(at + 2, comma));
      this.children[this.length] = parseInt(text.slice(comma + 1, comma + 12), 10);
      this.positions[this.length++] = at + 1;
      if (this.length % 1000 === 0 && turns.isOver()) await turns.next();
    }
  }

  // Returns the occurrence, or undefined if there is none.
  get(index) {
    if (!(index >= 0 && index < this.length)) return undefined;
    let low = 0, high = this.firsts.length - 1;
    while (low < high) {
      const middle = (low + high + 1) >> 1;
      if (this.firsts[middle] <= index) low = middle; else high = middle - 1;
    }
    const begin = this.positions[index];
    const row = JSON.parse(this.texts[low].slice(begin, this.texts[low].indexOf("\n", begin)));
    return { parent: row[0], child: row[1], instance: row[2], name: row[3], designator: row[4], placement: row[5] || IDENTITY };
  }
}

// Reads the parts of a list, each as one task.
async function readList(name, parts, convert) {
  const turns = new Turns();
  const list = [];
  for (let part = 0; part < (parts[name] || 0); ++part) {
    const text = await readText(`${name}-${part}`);
    await turns.next();
    for (const row of JSON.parse(text)) {
      list.push(convert(row));
      if (list.length % 1000 === 0) await turns.next();
    }
  }
  return list;
}

async function readModel() {
  const model = await readJson("model");
  const { parts } = model;
  model.products = await readList("products", parts, toProduct);
  const turns = new Turns();
  model.occurrences = new Occurrences();
  for (let part = 0; part < (parts.occurrences || 0); ++part) {
    await model.occurrences.addPart(await readText(`occurrences-${part}`), turns);
    await turns.next();
  }
  model.roots = model.roots || [];
  model.units = model.units || [];
  for (let i = 0; i < model.occurrences.length; ++i) {
    const parent = model.occurrences.parents[i];
    if (parent >= 0) model.products[parent].children.push(i);
    if (i % 1000 === 0) await turns.next();
  }
  model.layers = await readList("layers", parts, toLayer);
  model.properties = await readList("properties", parts, toProperty);
  model.colours = await readList("colours", parts, toColour);
  model.annotations = await readList("annotations", parts, toAnnotation);
  model.views = await readList("views", parts, toView);
  model.types = await readList("types", parts, toType);
  return model;
}

const textOf = text => text === null || text.trim() === "" ? "" : text;

// Returns the name of an occurrence, else that of its product; for a root (-1) that of the product.
function nodeName(model, product, occurrence) {
  const use = occurrence < 0 ? null : model.occurrences.get(occurrence);
  const target = model.products[product];
  return (use && textOf(use.name)) || textOf(target.name) || textOf(target.id) || "(no name)";
}

// Returns the product of a path, "0/3/12": the position of a root, then the occurrence at each level. -1 if it is none.
function productOf(model, path) {
  const steps = path.split("/").map(Number);
  const root = model.roots[steps[0]];
  if (root === undefined) return -1;
  let product = root;
  for (const step of steps.slice(1)) {
    if (model.occurrences.parents[step] !== product || !(step < model.occurrences.length)) return -1;
    product = model.occurrences.children[step];
  }
  return product;
}
