// Interactive picture of the product model, drawn by three.js.
//
// A node is one place of a product that has geometry. Nodes are numbered in the order of a depth-first traversal of the
// structure, so that the nodes below each node of the tree are a range of numbers. A row of the tree that represents equal
// children has several ranges; a texture with a byte for each node marks those that are selected, so that selection,
// dimming and sections need no change of buffers. Numbers and paths are converted by counting the nodes below each
// product, which takes no memory for each node of the tree.
//
// A product with many places is uploaded once and drawn with instancing. The others are joined to batches, so that
// 100,000 products do not take 100,000 draw calls. Coordinates on the graphics card are relative to the centre of the
// model and divided by its size; they are computed in double precision, so that a model far from the origin is exact.
//
// A frame is drawn only after something has changed, in slices: each slice draws as many lines and triangles as take
// SLICE milliseconds on this machine, then the browser gets a turn. Hardware draws most models in one slice. While the
// picture moves, a frame is one slice, which leaves out edges if there are too many.

const NODE_LIMIT = 200000;
const POINT_LIMIT = 12000000; // of all batches and instances
const BATCH_POINTS = 50000;
const PIECE_POINTS = 20000; // of one step of work, unless a polyline is longer
const CHUNK_INSTANCES = 500; // that are drawn at once
const SLICE = 30; // milliseconds of drawing
const MOVING_SLICE = 25; // of a frame while the picture moves
const FIRST_SLICE = 1000; // lines and triangles, before their time is known
const SMALL_FRAME = 2000; // lines and triangles that are drawn without measuring their time
const UPLOADS = 3; // batches whose buffers are uploaded in one slice
const MARKS_WIDTH = 512; // of the texture of the selected nodes
const MIN_INSTANCES = 8; // fewer places of a product join a batch
const MIN_INSTANCED_POINTS = 2000; // as do places with fewer points in total
const FIT_LIMIT = 5000; // nodes whose boxes are fitted one by one
const PICK_SIZE = 11; // pixels around the pointer where an edge is found
const ACCENT = { light: [0.85, 0.33, 0.0], dark: [1.0, 0.62, 0.2] };
const INK = { light: [0.17, 0.2, 0.25], dark: [0.82, 0.85, 0.9] };
const NOTE_INK = { light: [0.0, 0.36, 0.65], dark: [0.5, 0.78, 1.0] };
const FACE_GROUPS = ["faces", "glass", "areas"]; // areas: filled annotations
const FACE = [0.72, 0.76, 0.82];

// Geometry ------------------------------------------------------------------------------------------------------------

// Reads what the C++ struct PictureData encodes, without copies of the arrays.
async function parsePicture(bytes, turns) {
  const view = new DataView(bytes.buffer, bytes.byteOffset, bytes.byteLength);
  let at = 0;
  const next = () => { at += 4; return view.getUint32(at - 4, true); };
  if (next() !== 0x43495042 || next() !== 1) throw new Error("unknown picture data");
  const count = next();
  const names = ["points", "polylines", "runs", "meshPoints", "triangles", "meshRuns"];
  const totals = {};
  for (const name of names) totals[name] = next();
  next();
  const records = [];
  const first = [0, 0, 0, 0, 0, 0];
  for (let i = 0; i < count; ++i) {
    const record = { origin: [view.getFloat64(at, true), view.getFloat64(at + 8, true), view.getFloat64(at + 16, true)] };
    at += 24;
    record.kind = next();
    record.index = next();
    record.first = { points: first[0], polylines: first[1], runs: first[2], meshPoints: first[3], triangles: first[4],
      meshRuns: first[5] };
    for (let k = 0; k < names.length; ++k) {
      record[names[k]] = next();
      first[k] += record[names[k]];
    }
    record.product = next() | 0; // -1 for none
    next();
    records.push(record);
    if (i % 500 === 0) await turns.next();
  }
  const array = (Type, length) => {
    const begin = bytes.byteOffset + at;
    at += length * Type.BYTES_PER_ELEMENT;
    return begin % Type.BYTES_PER_ELEMENT === 0 ? new Type(bytes.buffer, begin, length)
      : new Type(bytes.buffer.slice(begin, begin + length * Type.BYTES_PER_ELEMENT));
  };
  const data = { records, totals };
  data.points = array(Float32Array, 3 * totals.points);
  data.lengths = array(Uint16Array, totals.polylines + totals.polylines % 2);
  data.runs = array(Int32Array, 2 * totals.runs);
  data.meshPoints = array(Float32Array, 3 * totals.meshPoints);
  data.normals = array(Int8Array, 4 * totals.meshPoints);
  data.triangles = array(Uint32Array, 3 * totals.triangles);
  data.meshRuns = array(Int32Array, 2 * totals.meshRuns);
  return data;
}

// Box of the points of a record, in the coordinates of its product without the origin.
async function recordBox(data, record, turns) {
  const box = [Infinity, Infinity, Infinity, -Infinity, -Infinity, -Infinity];
  const extend = async (array, first, count) => {
    for (let begin = first; begin < first + count; begin += 100000) {
      const end = Math.min(begin + 100000, first + count);
      for (let axis = 0; axis < 3; ++axis) {
        let low = box[axis];
        let high = box[axis + 3];
        for (let i = 3 * begin + axis; i < 3 * end; i += 3) {
          const value = array[i];
          if (value < low) low = value;
          if (value > high) high = value;
        }
        box[axis] = low;
        box[axis + 3] = high;
      }
      if (turns.isOver()) await turns.next();
    }
  };
  await extend(data.points, record.first.points, record.points);
  await extend(data.meshPoints, record.first.meshPoints, record.meshPoints);
  return box;
}

// Matrices are the 12 numbers of placements, row by row.
function multiply(a, b) {
  const product = new Array(12);
  for (let row = 0; row < 3; ++row) {
    for (let column = 0; column < 4; ++column) {
      product[4 * row + column] = a[4 * row] * b[column] + a[4 * row + 1] * b[4 + column] +
        a[4 * row + 2] * b[8 + column] + (column === 3 ? a[4 * row + 3] : 0);
    }
  }
  return product;
}

const apply = (m, x, y, z) => [
  m[0] * x + m[1] * y + m[2] * z + m[3],
  m[4] * x + m[5] * y + m[6] * z + m[7],
  m[8] * x + m[9] * y + m[10] * z + m[11],
];

// Numbers of the nodes, and their paths in the structure.
class NodeNumbers {
  // `hasGeometry` is true for each product that has some.
  constructor(model, hasGeometry) {
    this.model = model;
    this.hasGeometry = hasGeometry;
    this.below = new Float64Array(model.products.length).fill(-1);
    for (const root of model.roots) this.count(root);
    this.total = 0;
    for (const root of model.roots) this.total += this.below[root];
  }

  childOf(use) { return this.model.occurrences.children[use]; }

  count(root) {
    const pending = [root];
    while (pending.length > 0) {
      const product = pending[pending.length - 1];
      const { children } = this.model.products[product];
      if (this.below[product] === -1) {
        this.below[product] = -2; // its children are being counted
        for (const use of children) if (this.below[this.childOf(use)] === -1) pending.push(this.childOf(use));
        continue;
      }
      pending.pop();
      if (this.below[product] !== -2) continue;
      let sum = this.hasGeometry[product] ? 1 : 0;
      for (const use of children) sum += Math.max(0, this.below[this.childOf(use)]);
      this.below[product] = sum;
    }
  }

  // Returns the first number below a path and the number after the last one, or null if there is no such path.
  rangeOf(path) {
    const steps = path.split("/").map(Number);
    let first = 0;
    for (let i = 0; i < steps[0]; ++i) first += this.below[this.model.roots[i]];
    let product = this.model.roots[steps[0]];
    if (product === undefined) return null;
    for (const step of steps.slice(1)) {
      if (this.hasGeometry[product]) ++first;
      const { children } = this.model.products[product];
      const position = children.indexOf(step);
      if (position < 0) return null;
      for (let i = 0; i < position; ++i) first += this.below[this.childOf(children[i])];
      product = this.childOf(step);
    }
    return [first, first + this.below[product]];
  }

  // Returns the ranges of the nodes below a row of the tree, in order, up to the number `end`. `levels` has the position of
  // the root, and for each level below it the occurrences, all of the same product.
  rangesOf(levels, end) {
    let first = 0;
    for (let i = 0; i < levels[0][0]; ++i) first += this.below[this.model.roots[i]];
    let product = this.model.roots[levels[0][0]];
    const offsets = []; // of each level
    for (const uses of levels.slice(1)) {
      const wanted = new Set(uses);
      const found = [];
      let offset = this.hasGeometry[product] ? 1 : 0;
      for (const use of this.model.products[product].children) {
        if (wanted.has(use)) found.push(offset);
        offset += this.below[this.childOf(use)];
      }
      offsets.push(found);
      product = this.childOf(uses[0]);
    }
    const size = this.below[product];
    const ranges = [];
    const visit = (level, at) => {
      if (level === offsets.length) ranges.push([at, at + size]);
      else for (const offset of offsets[level]) if (at + offset < end) visit(level + 1, at + offset);
    };
    if (size > 0 && first < end) visit(0, first);
    return ranges;
  }

  pathOf(number) {
    let rest = number;
    let path = "";
    let product = -1;
    for (let i = 0; i < this.model.roots.length && product < 0; ++i) {
      const root = this.model.roots[i];
      if (rest < this.below[root]) {
        path = String(i);
        product = root;
      } else {
        rest -= this.below[root];
      }
    }
    while (product >= 0) {
      if (this.hasGeometry[product] && rest-- === 0) return path;
      let next = -1;
      for (const use of this.model.products[product].children) {
        const below = this.below[this.childOf(use)];
        if (rest < below) {
          path += "/" + use;
          next = this.childOf(use);
          break;
        }
        rest -= below;
      }
      product = next;
    }
    return null;
  }
}

// Places of the products that have geometry, in the order of their numbers.
async function placeNodes(model, numbers, recordOf, turns) {
  const limit = Math.min(numbers.total, NODE_LIMIT);
  const nodes = { count: 0, record: new Uint32Array(limit), matrix: new Float64Array(12 * limit), leftOut: 0 };
  // The units of a product are those of its geometry; the picture is in the unit of the first root.
  for (let i = 0; i < model.roots.length; ++i) {
    const pending = []; // product, matrix, position of the next child
    const enter = (product, matrix) => {
      if (numbers.hasGeometry[product] && nodes.count < limit) {
        nodes.record[nodes.count] = recordOf[product];
        nodes.matrix.set(matrix, 12 * nodes.count++);
      }
      pending.push([product, matrix, 0]);
    };
    enter(model.roots[i], scaling(rootFactor(model, i)));
    let steps = 0;
    while (pending.length > 0 && nodes.count < limit) {
      if (++steps % 256 === 0) await turns.next();
      const level = pending[pending.length - 1];
      const { children } = model.products[level[0]];
      if (level[2] === children.length) {
        pending.pop();
        continue;
      }
      const use = children[level[2]++];
      const child = model.occurrences.children[use];
      if (numbers.below[child] > 0) enter(child, multiply(level[1], model.occurrences.get(use).placement));
    }
  }
  nodes.leftOut = numbers.total - nodes.count;
  return nodes;
}

// Returns the placement of the first place of each product that annotations belong to.
async function firstPlaces(model, records, turns) {
  const wanted = new Set(records.map(each => each.product).filter(each => each >= 0 && each < model.products.length));
  const found = new Map();
  if (wanted.size === 0) return found;
  const seen = new Set();
  const pending = model.roots.map((root, i) => [root, scaling(rootFactor(model, i))]).reverse();
  while (pending.length > 0 && found.size < wanted.size) {
    const [product, matrix] = pending.pop();
    if (seen.has(product)) continue;
    seen.add(product);
    if (wanted.has(product)) found.set(product, matrix);
    const { children } = model.products[product];
    for (let k = children.length - 1; k >= 0; --k) {
      const child = model.occurrences.children[children[k]];
      if (!seen.has(child)) pending.push([child, multiply(matrix, model.occurrences.get(children[k]).placement)]);
    }
    await turns.next();
  }
  return found;
}

function rootFactor(model, root) {
  const metres = model.unitMetres;
  const unit = model.products[model.roots[root]].unit;
  if (!metres || !model.unit || !(unit >= 0) || !(metres[unit] > 0) || !(model.unit.metres > 0)) return 1;
  return metres[unit] / model.unit.metres;
}

// Shaders -------------------------------------------------------------------------------------------------------------

const VERTEX_SHADER = `
precision highp float;
uniform mat4 modelViewMatrix;
uniform mat4 projectionMatrix;
uniform vec2 range;       // contains the selected nodes; none if it is empty
uniform sampler2D marks;  // 1 for each node that is selected
uniform float marksHeight;
uniform float isolated;   // 1: only the selected nodes are shown
uniform float pass;       // 0: nodes that are not selected, 1: selected ones, 2: all
uniform vec2 shift;       // in clip coordinates, for wider lines
attribute vec3 position;
attribute vec4 color;
#ifdef IS_FACE
attribute vec3 normal;
varying vec3 vNormal;
#endif
#ifdef IS_INSTANCED
attribute vec4 row0;
attribute vec4 row1;
attribute vec4 row2;
#endif
attribute float node;
varying vec4 vColor;
varying vec3 vView;
varying float vSelected;
varying float vNode;
void main() {
  vec4 place = vec4(position, 1.0);
#ifdef IS_INSTANCED
  place = vec4(dot(row0, place), dot(row1, place), dot(row2, place), 1.0);
#endif
#ifdef IS_FACE
  vec3 direction = normal;
#ifdef IS_INSTANCED
  direction = vec3(dot(row0.xyz, normal), dot(row1.xyz, normal), dot(row2.xyz, normal));
#endif
  vNormal = mat3(modelViewMatrix) * direction;
#endif
  vColor = color;
  vNode = node;
  bool isSelected = node >= range.x && node < range.y;
  if (isSelected) {
    float row = floor((node + 0.5) / MARKS_WIDTH);
    vec2 mark = vec2((node - row * MARKS_WIDTH + 0.5) / MARKS_WIDTH, (row + 0.5) / marksHeight);
    isSelected = texture2D(marks, mark).r > 0.5;
  }
  vSelected = isSelected ? 1.0 : range.y > range.x ? -1.0 : 0.0;
  vec4 view = modelViewMatrix * place;
  vView = view.xyz;
  gl_Position = projectionMatrix * view;
  gl_Position.xy += shift * gl_Position.w;
  bool isHidden = (isolated > 0.5 && !isSelected) || (pass < 0.5 && isSelected) || (abs(pass - 1.0) < 0.5 && !isSelected);
  if (isHidden) gl_Position = vec4(2.0, 2.0, 2.0, 1.0);
}`;

const FRAGMENT_SHADER = `
precision highp float;
uniform vec3 ink;         // of edges without colour
uniform vec3 background;
uniform vec3 accent;
uniform float isDark;
uniform vec2 depths;      // nearest and farthest point
uniform float fading;
uniform float isPicking;
varying vec4 vColor;
varying vec3 vView;
varying float vSelected;
varying float vNode;
#ifdef IS_FACE
varying vec3 vNormal;
#endif
// Keeps the hue of a colour and separates it from the background.
vec3 readable(vec3 colour) {
  float light = dot(colour, vec3(0.3, 0.59, 0.11));
  if (isDark > 0.5) return mix(colour, vec3(1.0), 0.5 * smoothstep(0.42, 0.05, light));
  return colour * mix(1.0, 0.7, smoothstep(0.4, 0.9, light));
}
void main() {
  if (isPicking > 0.5) {
    float number = floor(vNode + 1.5);
    gl_FragColor = vec4(mod(number, 256.0), mod(floor(number / 256.0), 256.0), floor(number / 65536.0), 255.0) / 255.0;
    return;
  }
#ifdef IS_FACE
  vec3 normal = dot(vNormal, vNormal) > 1e-20 ? normalize(vNormal) : normalize(cross(dFdx(vView), dFdy(vView)));
  if (normal.z < 0.0) normal = -normal;
  float light = 0.52 + 0.46 * max(0.0, dot(normal, normalize(vec3(0.25, 0.45, 0.85)))) + 0.08 * normal.y;
  vec3 colour = vColor.rgb * light;
  if (vSelected > 0.5) colour = mix(colour, accent * light, 0.45);
  if (vSelected < -0.5) colour = mix(colour, background, 0.72);
  gl_FragColor = vec4(colour, vSelected < -0.5 ? min(vColor.a, 0.5) : vColor.a);
#else
  vec3 colour = vColor.a > 0.5 ? readable(vColor.rgb) : ink;
  float depth = clamp((-vView.z - depths.x) / max(1e-9, depths.y - depths.x), 0.0, 1.0);
  colour = mix(colour, background, fading * depth);
  if (vSelected > 0.5) colour = accent;
  if (vSelected < -0.5) colour = mix(colour, background, 0.72);
  gl_FragColor = vec4(colour, 1.0);
#endif
}`;

// Parts of the scene --------------------------------------------------------------------------------------------------

// Arrays that grow, for one batch of vertices and indices.
class Batch {
  constructor(isFace) {
    this.isFace = isFace;
    this.points = 0;
    this.positions = [];
    this.colours = [];
    this.nodes = [];
    this.normals = [];
    this.indices = [];
    this.indexCount = 0;
  }
  add(part) {
    this.positions.push(part.positions);
    this.colours.push(part.colours);
    this.nodes.push(part.nodes);
    if (this.isFace) this.normals.push(part.normals);
    this.indices.push([part.indices, this.points]);
    this.points += part.positions.length / 3;
    this.indexCount += part.indices.length;
  }
  join(Type, arrays) {
    const joined = new Type(arrays.reduce((sum, each) => sum + each.length, 0));
    let at = 0;
    for (const each of arrays) {
      joined.set(each, at);
      at += each.length;
    }
    return joined;
  }
  joinIndices() {
    const joined = new Uint32Array(this.indexCount);
    let at = 0;
    for (const [indices, first] of this.indices) {
      for (let i = 0; i < indices.length; ++i) joined[at++] = indices[i] + first;
    }
    return joined;
  }
}

// Returns the edges of a record in pieces: positions, colours and indices of segments.
async function recordEdges(data, record, colours, isShaded, turns) {
  const { runs, first } = record;
  const pieces = [];
  let point = first.points;
  let polyline = first.polylines;
  for (let run = first.runs; run < first.runs + runs; ++run) {
    const colour = colours.edge(data.runs[2 * run + 1], isShaded);
    const word = new Uint32Array(new Uint8Array(colour).buffer)[0];
    const end = polyline + data.runs[2 * run];
    while (polyline < end) {
      const begin = polyline;
      let points = 0;
      while (polyline < end && points < PIECE_POINTS) points += data.lengths[polyline++];
      const indices = new Uint32Array(2 * (points - (polyline - begin)));
      let at = 0;
      let index = 0;
      for (let i = begin; i < polyline; ++i) {
        for (let rest = data.lengths[i] - 1; rest > 0; --rest) {
          indices[at++] = index;
          indices[at++] = ++index;
        }
        ++index;
      }
      pieces.push({ positions: data.points.subarray(3 * point, 3 * (point + points)),
        colours: new Uint8Array(new Uint32Array(points).fill(word).buffer), indices });
      point += points;
      if (turns.isOver()) await turns.next();
    }
  }
  return pieces;
}

// Returns the opaque or the transparent triangles of a record in pieces, each with its own points.
async function recordFaces(data, record, colours, isTransparent, turns) {
  const { meshPoints, meshRuns, first } = record;
  const pieces = [];
  const local = new Uint32Array(meshPoints); // index of a point in its piece
  const pieceOf = new Uint32Array(meshPoints); // the last piece with a point, from 1
  let number = 0;
  let triangle = first.triangles;
  for (let run = first.meshRuns; run < first.meshRuns + meshRuns; ++run) {
    const colour = colours.face(data.meshRuns[2 * run + 1]);
    const end = triangle + data.meshRuns[2 * run];
    if ((colour[3] < 255) !== isTransparent) triangle = end;
    const word = new Uint32Array(new Uint8Array(colour).buffer)[0];
    while (triangle < end) {
      const count = Math.min(end - triangle, PIECE_POINTS);
      const indices = data.triangles.slice(3 * triangle, 3 * (triangle + count));
      const points = new Uint32Array(Math.min(indices.length, meshPoints));
      let size = 0;
      ++number;
      for (let i = 0; i < indices.length; ++i) {
        const point = indices[i] < meshPoints ? indices[i] : 0;
        if (pieceOf[point] !== number) {
          pieceOf[point] = number;
          local[point] = size;
          points[size++] = point;
        }
        indices[i] = local[point];
      }
      const positions = new Float32Array(3 * size);
      const normals = new Int8Array(3 * size);
      for (let i = 0; i < size; ++i) {
        const from = first.meshPoints + points[i];
        for (let axis = 0; axis < 3; ++axis) {
          positions[3 * i + axis] = data.meshPoints[3 * from + axis];
          normals[3 * i + axis] = data.normals[4 * from + axis];
        }
      }
      pieces.push({ positions, normals, colours: new Uint8Array(new Uint32Array(size).fill(word).buffer), indices });
      triangle += count;
      if (turns.isOver()) await turns.next();
    }
  }
  return pieces;
}

// Colours of the model as bytes.
class Colours {
  constructor(model) {
    this.list = (model.colours || []).map(each => {
      const number = parseInt(each.colour.slice(1), 16);
      return [number >> 16 & 255, number >> 8 & 255, number & 255, Math.round(255 * (1 - (each.transparency || 0)))];
    });
  }
  // Edges of shaded faces are darker than the faces, whose colour they usually have.
  edge(index, isShaded) {
    const colour = this.list[index];
    if (!colour) return isShaded ? [40, 44, 52, 255] : [0, 0, 0, 0];
    const factor = isShaded ? 0.45 : 1;
    return [colour[0] * factor, colour[1] * factor, colour[2] * factor, 255];
  }
  face(index) {
    const colour = this.list[index];
    return colour ? [colour[0], colour[1], colour[2], Math.max(16, colour[3])] : [...FACE.map(each => 255 * each), 255];
  }
}

// How many lines and triangles fit in a slice.
class Pace {
  constructor() {
    this.rate = 0; // milliseconds for each, 0 until it is known
    this.least = Infinity; // milliseconds of the shortest slice, most of which is the same for each slice
    this.budget = FIRST_SLICE;
  }
  // Prepares for a frame of this many. The rate depends on the view, so that a slow machine begins with few.
  begin(total) {
    if (this.rate === 0 || total * this.rate > SLICE / 4) this.budget = Math.min(this.budget, 4 * FIRST_SLICE);
  }
  add(count, time) {
    this.least = Math.min(this.least, time);
    if (count < FIRST_SLICE / 4) return;
    const rate = Math.max(time - this.least, time / 10) / count;
    this.rate = this.rate > 0 ? (this.rate + rate) / 2 : rate;
    const fitting = SLICE / Math.max(this.rate, rate);
    this.budget = Math.max(FIRST_SLICE / 2, Math.min(fitting, Math.max(this.budget, 4 * count)));
  }
}

// The picture ---------------------------------------------------------------------------------------------------------

class Picture {
  constructor(canvas, context) {
    this.canvas = canvas;
    this.renderer = new THREE.WebGLRenderer({ canvas, context, antialias: true, alpha: false });
    this.renderer.autoClear = false;
    this.renderer.sortObjects = false;
    context.getExtension("OES_standard_derivatives");
    this.scene = new THREE.Scene();
    this.scene.autoUpdate = false;
    this.context = context;
    this.groups = {};
    for (const name of ["faces", "glass", "edges", "notes", "areas"]) {
      this.groups[name] = new THREE.Group();
      this.scene.add(this.groups[name]);
    }
    this.shared = {
      range: { value: new THREE.Vector2(0, 0) }, marks: { value: null }, marksHeight: { value: 1 }, isolated: { value: 0 }, pass: { value: 2 },
      shift: { value: new THREE.Vector2(0, 0) }, background: { value: new THREE.Vector3() },
      accent: { value: new THREE.Vector3() }, isDark: { value: 0 }, depths: { value: new THREE.Vector2(0, 1) },
      fading: { value: 0.5 }, isPicking: { value: 0 },
    };
    this.inks = { edges: { value: new THREE.Vector3() }, notes: { value: new THREE.Vector3() } };
    this.materials = {};
    this.orthographic = new THREE.OrthographicCamera(-1, 1, 1, -1, 0, 1);
    this.perspectiveCamera = new THREE.PerspectiveCamera(30, 1, 0.01, 10);
    this.isPerspective = false;
    this.azimuth = 0;
    this.elevation = 0;
    this.target = new THREE.Vector3();
    this.height = 1.2; // of the visible part of the plane through the target
    this.centre = new THREE.Vector3();
    this.radius = 0.5; // of a sphere around everything
    this.segments = 0;
    this.hasFaces = false;
    this.isRequested = false;
    this.isMoving = false;
    this.frame = null; // that is being drawn
    this.pace = new Pace();
    this.pickPace = new Pace(); // few lines are inside its small target
    this.width = 1;
    this.pixelHeight = 1;
    this.setSelection([], 1);
  }

  // Selects the nodes of these ranges, in order, among `count` nodes.
  setSelection(ranges, count) {
    const height = Math.max(1, Math.ceil(count / MARKS_WIDTH));
    if (!this.marks || this.marks.length !== MARKS_WIDTH * height) {
      this.marks = new Uint8Array(MARKS_WIDTH * height);
      this.shared.marks.value = new THREE.DataTexture(this.marks, MARKS_WIDTH, height, THREE.LuminanceFormat);
      this.shared.marksHeight.value = height;
    } else {
      this.marks.fill(0);
    }
    for (const [first, end] of ranges) this.marks.fill(255, first, end);
    this.shared.marks.value.needsUpdate = true;
    this.shared.range.value.set(ranges.length > 0 ? ranges[0][0] : 0, ranges.length > 0 ? ranges[ranges.length - 1][1] : 0);
  }

  // Materials of a kind share all uniforms but the colour of the ink.
  material(name, isInstanced) {
    const key = name + isInstanced;
    if (this.materials[key]) return this.materials[key];
    const isFace = FACE_GROUPS.includes(name);
    const defines = { MARKS_WIDTH: MARKS_WIDTH + ".0" };
    if (isFace) defines.IS_FACE = "";
    if (isInstanced) defines.IS_INSTANCED = "";
    const material = new THREE.RawShaderMaterial({
      vertexShader: VERTEX_SHADER, fragmentShader: FRAGMENT_SHADER, defines, side: THREE.DoubleSide,
      uniforms: { ...this.shared, ink: name === "notes" ? this.inks.notes : this.inks.edges },
      extensions: { derivatives: isFace }, transparent: name === "glass", depthWrite: name !== "glass",
      polygonOffset: isFace, polygonOffsetFactor: 1, polygonOffsetUnits: 2,
    });
    this.materials[key] = material;
    return material;
  }

  // Adds vertices and indices to a group. `instances` is null, or has rows and nodes.
  add(name, part, instances) {
    const geometry = instances ? new THREE.InstancedBufferGeometry() : new THREE.BufferGeometry();
    const isFace = FACE_GROUPS.includes(name);
    // The chunks of the instances of a part share its buffers.
    const shared = part.attributes || {};
    part.attributes = shared;
    const attribute = (name, array, size, isNormalized) => {
      shared[name] = shared[name] || new THREE.BufferAttribute(array, size, isNormalized);
      return shared[name];
    };
    geometry.setAttribute("position", attribute("position", part.positions, 3, false));
    geometry.setAttribute("color", attribute("color", part.colours, 4, true));
    if (isFace) geometry.setAttribute("normal", attribute("normal", part.normals, 3, true));
    geometry.setIndex(attribute("index", part.indices, 1, false));
    if (instances) {
      // The pieces of a product share these buffers.
      instances.buffer = instances.buffer || new THREE.InstancedInterleavedBuffer(instances.rows, 12);
      instances.attribute = instances.attribute || new THREE.InstancedBufferAttribute(instances.nodes, 1);
      for (let row = 0; row < 3; ++row) {
        geometry.setAttribute("row" + row, new THREE.InterleavedBufferAttribute(instances.buffer, 4, 4 * row));
      }
      geometry.setAttribute("node", instances.attribute);
      geometry.maxInstancedCount = instances.nodes.length;
    } else {
      geometry.setAttribute("node", new THREE.BufferAttribute(part.nodes, 1));
    }
    const material = this.material(name, instances !== null);
    const object = isFace ? new THREE.Mesh(geometry, material) : new THREE.LineSegments(geometry, material);
    const { position } = geometry.attributes;
    geometry.boundingSphere = instances ? null : sphereAround(position.array);
    object.frustumCulled = false; // by drawSlice
    object.matrixAutoUpdate = false;
    object.visible = false;
    const nodes = instances ? instances.nodes : part.nodes;
    let [lowest, highest] = [Infinity, -Infinity];
    for (let i = 0; i < nodes.length; ++i) {
      if (nodes[i] < lowest) lowest = nodes[i];
      if (nodes[i] > highest) highest = nodes[i];
    }
    object.userData = { lines: part.indices.length / (isFace ? 3 : 2), corners: isFace ? 3 : 2, lowest, highest,
      instances: instances ? instances.nodes.length : 1, isUploaded: false };
    this.groups[name].add(object);
    if (isFace && name !== "areas") this.hasFaces = true;
    if (!isFace) this.segments += part.indices.length / 2 * (instances ? instances.nodes.length : 1);
  }

  setTheme(isDark, background) {
    const theme = isDark ? "dark" : "light";
    this.shared.isDark.value = isDark ? 1 : 0;
    this.shared.background.value.fromArray(background);
    this.shared.accent.value.fromArray(ACCENT[theme]);
    this.inks.edges.value.fromArray(INK[theme]);
    this.inks.notes.value.fromArray(NOTE_INK[theme]);
    this.renderer.setClearColor(new THREE.Color(...background), 1);
    this.request();
  }

  resize(width, height, ratio) {
    this.width = Math.max(1, width);
    this.pixelHeight = Math.max(1, height);
    this.renderer.setPixelRatio(ratio);
    this.renderer.setSize(this.width, this.pixelHeight, false);
    this.ratio = ratio;
    this.frame = null; // the canvas is empty now
    this.render();
  }

  // Directions of the camera in the model: to the right, up and towards the viewer.
  axes() {
    const [sa, ca] = [Math.sin(this.azimuth), Math.cos(this.azimuth)];
    const [se, ce] = [Math.sin(this.elevation), Math.cos(this.elevation)];
    const right = new THREE.Vector3(ca, sa, 0);
    const back = new THREE.Vector3(sa * ce, -ca * ce, se);
    return { right, back, up: new THREE.Vector3().crossVectors(back, right) };
  }

  updateCamera() {
    const { right, up, back } = this.axes();
    const aspect = this.width / this.pixelHeight;
    const toCentre = this.centre.clone().sub(this.target).dot(back);
    const camera = this.isPerspective ? this.perspectiveCamera : this.orthographic;
    const distance = this.isPerspective ? this.height / 2 / Math.tan(camera.fov * Math.PI / 360)
      : Math.abs(toCentre) + 2 * this.radius;
    const reach = this.radius * 1.01 + 1e-6;
    const nearest = distance - toCentre - reach;
    const farthest = distance - toCentre + reach;
    if (this.isPerspective) {
      camera.aspect = aspect;
      camera.near = Math.max(nearest, distance / 500, 1e-7);
      camera.far = Math.max(farthest, camera.near * 2);
    } else {
      camera.top = this.height / 2;
      camera.bottom = -camera.top;
      camera.right = camera.top * aspect;
      camera.left = -camera.right;
      camera.near = nearest;
      camera.far = farthest;
    }
    camera.position.copy(this.target).addScaledVector(back, distance);
    camera.matrixAutoUpdate = false;
    camera.matrix.makeBasis(right, up, back).setPosition(camera.position);
    camera.matrixWorld.copy(camera.matrix);
    camera.matrixWorldInverse.getInverse(camera.matrixWorld);
    camera.updateProjectionMatrix();
    this.shared.depths.value.set(Math.max(0, nearest), farthest);
    return camera;
  }

  // Requests a frame.
  request() {
    this.frame = null;
    this.canvas.dataset.frame = "requested";
    this.schedule();
  }

  schedule() {
    if (this.isRequested) return;
    this.isRequested = true;
    requestAnimationFrame(() => {
      this.isRequested = false;
      this.render();
    });
  }

  // While the picture moves, frames may leave out edges.
  setMoving(isMoving) {
    if (isMoving === this.isMoving) return;
    this.isMoving = isMoving;
    if (!isMoving && this.lastDetail < 1) this.request();
  }

  // Returns what a frame draws: the objects of each step and their uniforms.
  steps(detail) {
    const { shared } = this;
    const { x: first, y: end } = shared.range.value;
    const hasSelection = end > first;
    const isIsolated = hasSelection && shared.isolated.value > 0;
    const isSmall = this.segments < 300000 && detail === 1;
    // Lines are one pixel of the screen wide; on dense screens and for the selection they are drawn several times.
    const widths = !isSmall ? [[0, 0]] : this.ratio > 1.4 ? [[0, 0], [1, 0], [0, 1]] : [[0, 0], [0.5, 0.5]];
    const selectedWidths = this.ratio > 1.4 ? [[0, 0], [1, 0], [0, 1], [-1, 0], [0, -1]] : [[0, 0], [1, 0], [0, 1]];
    const steps = [];
    const add = (names, pass, offset, clearsDepth = false) => {
      let objects = names.flatMap(name => this.groups[name].children);
      if (pass === 1 || isIsolated) objects = objects.filter(({ userData }) => userData.highest >= first && userData.lowest < end);
      if (objects.length > 0 || clearsDepth) steps.push({ names, objects, pass, offset, clearsDepth });
    };
    add(this.showsNotes ? ["faces", "areas"] : ["faces"], 2, [0, 0]);
    const names = this.showsNotes ? ["edges", "notes"] : ["edges"];
    if (!isIsolated) for (const offset of widths) add(names, hasSelection ? 0 : 2, offset);
    if (hasSelection) {
      const offsets = isIsolated ? widths : selectedWidths;
      offsets.forEach((offset, i) => add(["edges"], 1, offset, i === 0 && !this.hasFaces));
    }
    add(["glass"], 2, [0, 0]);
    return steps;
  }

  // Returns a frame for `steps`, of which each object draws this part of its lines.
  makeFrame(steps, detail) {
    let total = 0;
    for (const { objects } of steps) for (const { userData } of objects) total += userData.lines * userData.instances;
    return { steps, detail, total: total * detail, step: 0, object: 0, line: 0, isPicking: false };
  }

  beginFrame() {
    let frame = this.makeFrame(this.steps(1), 1);
    const time = frame.total * this.pace.rate;
    if (this.isMoving && time > MOVING_SLICE) {
      const detail = Math.max(1 / 256, MOVING_SLICE / time);
      frame = this.makeFrame(this.steps(detail), detail);
    } else {
      this.pace.begin(frame.total);
    }
    this.lastDetail = frame.detail;
    this.renderer.setRenderTarget(null);
    this.renderer.clear();
    this.canvas.dataset.frame = "begun";
    return frame;
  }

  // Draws a slice of the frame, and requests the next one.
  render() {
    const isNew = this.frame === null;
    if (isNew) this.frame = this.beginFrame();
    const isSmall = this.frame.total <= SMALL_FRAME;
    if (!isSmall && isNew) this.waitForDrawing();
    if (this.drawSlice(this.frame, isSmall ? null : this.pace, this.updateCamera(), null, () => this.waitForDrawing())) {
      this.canvas.dataset.frame = "drawn";
    } else {
      this.schedule();
    }
  }

  // Waits until the canvas is drawn; otherwise the browser would wait when it shows the canvas.
  waitForDrawing() {
    this.context.readPixels(0, 0, 1, 1, this.context.RGBA, this.context.UNSIGNED_BYTE, new Uint8Array(4));
  }

  // Draws the next lines and triangles of a frame: as many as fit, or all if `pace` is null. `wait` returns when they are
  // drawn. Returns whether the frame is complete.
  drawSlice(frame, pace, camera, target, wait) {
    const { shared } = this;
    const begin = performance.now();
    const frustum = new THREE.Frustum().setFromMatrix(
      new THREE.Matrix4().multiplyMatrices(camera.projectionMatrix, camera.matrixWorldInverse));
    let rest = pace ? pace.budget : Infinity;
    let uploads = pace ? UPLOADS : Infinity;
    let lines = 0;
    shared.isPicking.value = frame.isPicking ? 1 : 0;
    shared.fading.value = this.hasFaces ? 0 : 0.4;
    this.renderer.setRenderTarget(target);
    while (rest > 0 && uploads > 0 && frame.step < frame.steps.length) {
      const { names, objects, pass, offset, clearsDepth } = frame.steps[frame.step];
      if (clearsDepth && frame.object === 0 && frame.line === 0) this.renderer.clearDepth();
      const drawn = [];
      while (rest > 0 && uploads > 0 && frame.object < objects.length) {
        const object = objects[frame.object];
        const { userData, geometry } = object;
        if (geometry.boundingSphere && !frustum.intersectsSphere(geometry.boundingSphere)) {
          frame.line = 0;
          ++frame.object;
          continue;
        }
        if (!userData.isUploaded) --uploads;
        userData.isUploaded = true;
        const instances = Math.max(1, Math.ceil(userData.instances * (userData.instances > 1 ? frame.detail : 1)));
        const end = Math.max(1, Math.floor(userData.lines * (userData.instances > 1 ? 1 : frame.detail)));
        const count = Math.min(end - frame.line, Math.max(1, Math.floor(rest / instances)));
        geometry.setDrawRange(frame.line * userData.corners, count * userData.corners);
        if (geometry.isInstancedBufferGeometry) geometry.maxInstancedCount = instances;
        object.visible = true;
        drawn.push(object);
        rest -= count * instances;
        lines += count * instances;
        frame.line += count;
        if (frame.line < end) {
          rest = 0; // an object has one range in a slice
        } else {
          frame.line = 0;
          ++frame.object;
        }
      }
      shared.pass.value = pass;
      shared.shift.value.set(2 * offset[0] / (this.width * this.ratio), 2 * offset[1] / (this.pixelHeight * this.ratio));
      for (const name of Object.keys(this.groups)) this.groups[name].visible = names.includes(name);
      this.renderer.render(this.scene, camera);
      for (const object of drawn) object.visible = false;
      if (frame.object >= objects.length) {
        ++frame.step;
        frame.object = 0;
      }
    }
    const isComplete = frame.step >= frame.steps.length;
    if (!pace) return isComplete;
    wait();
    pace.add(lines, performance.now() - begin);
    return isComplete;
  }

  // Returns the number of the node at a position of the canvas, or -1; null if the view has changed meanwhile.
  async pick(x, y) {
    if (!this.pickTarget) this.pickTarget = new THREE.WebGLRenderTarget(PICK_SIZE, PICK_SIZE);
    const half = (PICK_SIZE - 1) / 2;
    const pixels = new Uint8Array(4 * PICK_SIZE * PICK_SIZE);
    const read = () => this.renderer.readRenderTargetPixels(this.pickTarget, 0, 0, PICK_SIZE, PICK_SIZE, pixels);
    const state = () => [this.azimuth, this.elevation, this.height, this.isPerspective, ...this.target.toArray()].join();
    const before = state();
    const steps = [["faces"], ["edges"]].map(names => ({ names, objects: this.groups[names[0]].children, pass: 2, offset: [0, 0] }));
    const frame = this.makeFrame(steps, 1);
    frame.isPicking = true;
    this.pickPace.begin(frame.total);
    for (let isComplete = false, isFirst = true; !isComplete; isFirst = false) {
      const camera = this.updateCamera();
      camera.setViewOffset(this.width, this.pixelHeight, x - half - 0.5, y - half - 0.5, PICK_SIZE, PICK_SIZE);
      camera.updateProjectionMatrix();
      if (isFirst) {
        this.renderer.setRenderTarget(this.pickTarget);
        this.renderer.setClearColor(0x000000, 0);
        this.renderer.clear();
        this.renderer.setClearColor(new THREE.Color(...this.shared.background.value.toArray()), 1);
      }
      isComplete = this.drawSlice(frame, this.pickPace, camera, this.pickTarget, read);
      camera.clearViewOffset();
      if (!isComplete) await pause();
      if (state() !== before) return null;
    }
    let best = -1;
    let nearest = Infinity;
    for (let i = 0; i < PICK_SIZE * PICK_SIZE; ++i) {
      const number = pixels[4 * i] + 256 * pixels[4 * i + 1] + 65536 * pixels[4 * i + 2];
      const distance = Math.hypot(i % PICK_SIZE - half, Math.floor(i / PICK_SIZE) - half);
      if (number > 0 && distance < nearest) {
        best = number - 1;
        nearest = distance;
      }
    }
    return best;
  }

  // Moves the target so that the picture follows the pointer by this many pixels.
  pan(x, y) {
    const { right, up, back } = this.axes();
    const scale = this.height / this.pixelHeight;
    this.target.addScaledVector(right, -x * scale).addScaledVector(up, y * scale);
    this.request();
  }

  rotate(x, y) {
    this.azimuth = (this.azimuth - x * 0.008) % (2 * Math.PI);
    this.elevation = Math.max(-Math.PI / 2, Math.min(Math.PI / 2, this.elevation + y * 0.008));
    this.request();
  }

  // Zooms so that the point at a position of the canvas keeps it.
  zoom(factor, x = this.width / 2, y = this.pixelHeight / 2) {
    const height = Math.max(1e-6, Math.min(50, this.height / factor));
    const ratio = 1 - height / this.height;
    this.pan((this.width / 2 - x) * ratio, (this.pixelHeight / 2 - y) * ratio);
    this.height = height;
    this.request();
  }

  look(azimuth, elevation) {
    this.azimuth = azimuth * Math.PI / 180;
    this.elevation = elevation * Math.PI / 180;
    this.request();
  }

  // Shows these boxes; each has 6 numbers.
  fit(boxes) {
    const { right, up, back } = this.axes();
    const low = [Infinity, Infinity, Infinity];
    const high = [-Infinity, -Infinity, -Infinity];
    const corner = new THREE.Vector3();
    for (const box of boxes) {
      for (let i = 0; i < 8; ++i) {
        corner.set(box[i & 1 ? 3 : 0], box[i & 2 ? 4 : 1], box[i & 4 ? 5 : 2]);
        [right, up, back].forEach((axis, k) => {
          const value = corner.dot(axis);
          low[k] = Math.min(low[k], value);
          high[k] = Math.max(high[k], value);
        });
      }
    }
    if (!(low[0] <= high[0])) return;
    const aspect = this.width / this.pixelHeight;
    const margin = 1.12;
    const deep = this.isPerspective ? (high[2] - low[2]) * 0.5 : 0;
    this.height = Math.max(1e-6, margin * Math.max(high[1] - low[1], (high[0] - low[0]) / aspect) + deep * 0.54);
    this.target.set(0, 0, 0).addScaledVector(right, (low[0] + high[0]) / 2).addScaledVector(up, (low[1] + high[1]) / 2)
      .addScaledVector(back, (low[2] + high[2]) / 2);
    this.request();
  }
}

// Returns a sphere around the points, or null if a coordinate is not finite.
function sphereAround(positions) {
  const low = [Infinity, Infinity, Infinity];
  const high = [-Infinity, -Infinity, -Infinity];
  for (let axis = 0; axis < 3; ++axis) {
    for (let i = axis; i < positions.length; i += 3) {
      if (!Number.isFinite(positions[i])) return null;
      if (positions[i] < low[axis]) low[axis] = positions[i];
      if (positions[i] > high[axis]) high[axis] = positions[i];
    }
  }
  const centre = low.map((value, axis) => (value + high[axis]) / 2);
  // Wider lines reach a little outside.
  return new THREE.Sphere(new THREE.Vector3(...centre), Math.hypot(...high.map((value, axis) => value - low[axis])) / 2 + 1e-5);
}

// Loading -------------------------------------------------------------------------------------------------------------

async function loadThree() {
  if (typeof THREE !== "undefined") return;
  const script = document.createElement("script");
  script.textContent = await readText("three");
  document.head.append(script);
  if (typeof THREE === "undefined") throw new Error("three.js did not start");
}

function createContext(canvas) {
  const attributes = { alpha: false, antialias: true, depth: true, stencil: false, preserveDrawingBuffer: true,
    powerPreference: "high-performance" };
  try {
    const context = canvas.getContext("webgl", attributes);
    return context && !context.isContextLost() && context.getExtension("ANGLE_instanced_arrays") &&
      context.getExtension("OES_element_index_uint") && context.getExtension("OES_standard_derivatives") &&
      context.getParameter(context.MAX_VERTEX_TEXTURE_IMAGE_UNITS) > 0 ? context : null;
  } catch (error) {
    return null;
  }
}

// Adds the geometry to the picture, with a pause for the browser after each piece. Returns the boxes of the nodes and
// sentences about what is left out.
async function fillPicture(picture, model, data, turns) {
  const recordOf = new Int32Array(model.products.length).fill(-1);
  const boxes = [];
  for (let i = 0; i < data.records.length; ++i) {
    const record = data.records[i];
    boxes.push(await recordBox(data, record, turns));
    if (record.kind === 0 && record.index < recordOf.length) recordOf[record.index] = i;
  }
  const numbers = new NodeNumbers(model, Array.from(recordOf, each => each >= 0));
  const nodes = await placeNodes(model, numbers, recordOf, turns);

  // The box of all nodes, in the coordinates of the model.
  const whole = [Infinity, Infinity, Infinity, -Infinity, -Infinity, -Infinity];
  const corners = (matrix, record, visit) => {
    const box = boxes[record];
    const { origin } = data.records[record];
    for (let i = 0; i < 8; ++i) {
      visit(apply(matrix, box[i & 1 ? 3 : 0] + origin[0], box[i & 2 ? 4 : 1] + origin[1], box[i & 4 ? 5 : 2] + origin[2]));
    }
  };
  const extend = box => point => point.forEach((value, axis) => {
    if (!Number.isFinite(value)) return;
    box[axis] = Math.min(box[axis], value);
    box[axis + 3] = Math.max(box[axis + 3], value);
  });
  // An annotation is shown at the first place of its product.
  const placeOfProduct = await firstPlaces(model, data.records, turns);
  const noteMatrix = record => placeOfProduct.get(record.product) ||
    (model.roots.length > 0 ? scaling(rootFactor(model, 0)) : IDENTITY);
  for (let i = 0; i < nodes.count; ++i) {
    corners(nodes.matrix.subarray(12 * i, 12 * i + 12), nodes.record[i], extend(whole));
    if (i % 256 === 0) await turns.next();
  }
  const notes = [];
  data.records.forEach((record, i) => { if (record.kind === 1) notes.push(i); });
  // Annotations may be far outside; the picture begins with the shape.
  const shape = whole.slice();
  for (const note of notes) corners(noteMatrix(data.records[note]), note, extend(whole));
  if (!(whole[0] <= whole[3])) return null;
  if (!(shape[0] <= shape[3])) for (let i = 0; i < 6; ++i) shape[i] = whole[i];
  const centre = [0, 1, 2].map(axis => shape[axis] + (shape[axis + 3] - shape[axis]) / 2);
  const size = Math.hypot(...[0, 1, 2].map(axis => shape[axis + 3] - shape[axis])) || 1;
  const unit = 1 / size;
  const toScene = matrix => { // of the placement of a record
    const scaled = Array.from(matrix, each => each * unit);
    for (let row = 0; row < 3; ++row) scaled[4 * row + 3] = (matrix[4 * row + 3] - centre[row]) * unit;
    return scaled;
  };
  const local = (matrix, origin) => { // of the points of a record
    const scaled = Array.from(matrix, each => each * unit);
    const moved = apply(matrix, ...origin);
    for (let row = 0; row < 3; ++row) scaled[4 * row + 3] = (moved[row] - centre[row]) * unit;
    return scaled;
  };
  const sceneBox = box => Array.from(box, (value, i) => (value - centre[i % 3]) * unit);
  picture.radius = Math.max(0.5, ...sceneBox(whole).map(Math.abs)) * Math.sqrt(3);

  // Places by record.
  const places = data.records.map(() => []);
  for (let i = 0; i < nodes.count; ++i) places[nodes.record[i]].push(i);
  const colours = new Colours(model);
  const batches = { edges: new Batch(false), notes: new Batch(false), faces: new Batch(true), glass: new Batch(true), areas: new Batch(true) };
  const flush = async name => {
    const batch = batches[name];
    if (batch.indexCount === 0) return;
    batches[name] = new Batch(batch.isFace);
    picture.add(name, { positions: batch.join(Float32Array, batch.positions), colours: batch.join(Uint8Array, batch.colours),
      nodes: batch.join(Float32Array, batch.nodes), normals: batch.isFace ? batch.join(Int8Array, batch.normals) : null,
      indices: batch.joinIndices() }, null);
    if (turns.isOver()) await turns.next();
  };
  const transform = (part, matrix, node) => {
    const count = part.positions.length / 3;
    const positions = new Float32Array(3 * count);
    const from = part.positions;
    const [a, b, c, d, e, f, g, h, k, l, m, n] = matrix;
    for (let i = 0; i < 3 * count; i += 3) {
      const x = from[i];
      const y = from[i + 1];
      const z = from[i + 2];
      positions[i] = a * x + b * y + c * z + d;
      positions[i + 1] = e * x + f * y + g * z + h;
      positions[i + 2] = k * x + l * y + m * z + n;
    }
    let { normals } = part;
    if (normals) {
      normals = new Int8Array(3 * count);
      const scale = Math.cbrt(Math.abs(determinant(matrix))) || 1;
      for (let i = 0; i < 3 * count; i += 3) {
        const [x, y, z] = [part.normals[i], part.normals[i + 1], part.normals[i + 2]];
        for (let row = 0; row < 3; ++row) {
          const value = (matrix[4 * row] * x + matrix[4 * row + 1] * y + matrix[4 * row + 2] * z) / scale;
          normals[i + row] = Math.max(-127, Math.min(127, Math.round(value)));
        }
      }
    }
    return { positions, normals, colours: part.colours, indices: part.indices,
      nodes: new Float32Array(count).fill(node) };
  };

  let points = 0;
  let skipped = 0;
  for (let i = 0; i < data.records.length; ++i) {
    const record = data.records[i];
    const isNote = record.kind === 1;
    const at = isNote ? [-1] : places[i];
    if (at.length === 0) continue;
    const size = record.points + record.meshPoints;
    const isInstanced = at.length >= MIN_INSTANCES && size * at.length >= MIN_INSTANCED_POINTS;
    const count = Math.min(at.length, Math.max(0, Math.floor((POINT_LIMIT - points) / size)));
    skipped += at.length - count;
    points += size * count;
    if (count === 0) continue;
    const parts = [];
    if (record.points > 0) {
      for (const piece of await recordEdges(data, record, colours, record.triangles > 0, turns)) {
        parts.push([isNote ? "notes" : "edges", piece]);
      }
    }
    if (record.triangles > 0) {
      for (const name of ["faces", "glass"]) {
        for (const piece of await recordFaces(data, record, colours, name === "glass", turns)) {
          parts.push([isNote ? "areas" : name, piece]);
        }
      }
    }
    if (isInstanced) {
      for (let begin = 0; begin < count; begin += CHUNK_INSTANCES) {
        const chunk = Math.min(CHUNK_INSTANCES, count - begin);
        const instances = { rows: new Float32Array(12 * chunk), nodes: new Float32Array(chunk) };
        for (let k = 0; k < chunk; ++k) {
          const node = at[begin + k];
          instances.rows.set(local(nodes.matrix.subarray(12 * node, 12 * node + 12), record.origin), 12 * k);
          instances.nodes[k] = node;
        }
        for (const [name, part] of parts) {
          picture.add(name, part, instances);
          if (turns.isOver()) await turns.next();
        }
        if (turns.isOver()) await turns.next();
      }
    } else {
      for (let k = 0; k < count; ++k) {
        const matrix = local(isNote ? noteMatrix(record) : nodes.matrix.subarray(12 * at[k], 12 * at[k] + 12), record.origin);
        for (const [name, part] of parts) {
          if (batches[name].points + part.positions.length / 3 > 2 * BATCH_POINTS) await flush(name);
          batches[name].add(transform(part, matrix, at[k]));
          if (batches[name].points >= BATCH_POINTS) await flush(name);
          if (turns.isOver()) await turns.next();
        }
      }
    }
    if (turns.isOver()) await turns.next();
  }
  for (const name of Object.keys(batches)) await flush(name);

  const leftOut = [];
  if (nodes.leftOut + skipped > 0) {
    leftOut.push(`The picture shows ${(numbers.total - nodes.leftOut - skipped).toLocaleString("en")} of ` +
      `${numbers.total.toLocaleString("en")} parts.`);
  }
  const boxesOf = ranges => {
    const found = [];
    let count = 0;
    for (const [first, end] of ranges) count += Math.min(end, nodes.count) - first;
    // The box of everything is looser, and takes no time.
    if (count > FIT_LIMIT) return [sceneBox(shape)];
    for (const [first, end] of ranges) {
      for (let i = first; i < Math.min(end, nodes.count); ++i) {
        const box = [Infinity, Infinity, Infinity, -Infinity, -Infinity, -Infinity];
        corners(toScene(nodes.matrix.subarray(12 * i, 12 * i + 12)), nodes.record[i], extend(box));
        if (box[0] <= box[3]) found.push(box);
      }
    }
    return found;
  };
  const noteBoxes = notes.length > FIT_LIMIT ? [sceneBox(whole)] : notes.map(note => {
    const box = [Infinity, Infinity, Infinity, -Infinity, -Infinity, -Infinity];
    corners(toScene(noteMatrix(data.records[note])), note, extend(box));
    return box;
  });
  return { numbers, count: nodes.count, boxesOf, whole: sceneBox(shape), noteBoxes, hasNotes: notes.length > 0, leftOut };
}

const scaling = factor => [factor, 0, 0, 0, 0, factor, 0, 0, 0, 0, factor, 0];
const determinant = m => m[0] * (m[5] * m[10] - m[6] * m[9]) - m[1] * (m[4] * m[10] - m[6] * m[8]) +
  m[2] * (m[4] * m[9] - m[5] * m[8]);

// Controls ------------------------------------------------------------------------------------------------------------

function addMouseAndTouch(picture, canvas, onClick, onMove) {
  const pointers = new Map();
  let travel = 0;
  let last = null; // centre and distance of two pointers
  const pair = () => {
    const [a, b] = [...pointers.values()];
    return { x: (a.x + b.x) / 2, y: (a.y + b.y) / 2, distance: Math.hypot(a.x - b.x, a.y - b.y) };
  };
  const position = event => {
    const box = canvas.getBoundingClientRect();
    return { x: event.clientX - box.left, y: event.clientY - box.top };
  };
  canvas.addEventListener("pointerdown", event => {
    if (pointers.size === 0) travel = 0;
    pointers.set(event.pointerId, { ...position(event), button: event.button });
    last = pointers.size === 2 ? pair() : null;
    try { canvas.setPointerCapture(event.pointerId); } catch (error) { /* the pointer is gone */ }
    canvas.focus({ preventScroll: true });
    if (event.button === 1) event.preventDefault();
  });
  canvas.addEventListener("pointermove", event => {
    const before = pointers.get(event.pointerId);
    if (!before) return;
    const now = position(event);
    const [x, y] = [now.x - before.x, now.y - before.y];
    travel += Math.abs(x) + Math.abs(y);
    pointers.set(event.pointerId, { ...now, button: before.button });
    if (pointers.size >= 2) {
      const next = pair();
      if (last) {
        picture.pan(next.x - last.x, next.y - last.y);
        if (last.distance > 0 && next.distance > 0) picture.zoom(next.distance / last.distance, next.x, next.y);
      }
      last = next;
    } else if (travel > 3) {
      if (before.button !== 0 || event.shiftKey || event.ctrlKey) picture.pan(x, y);
      else picture.rotate(x, y);
    }
    if (travel > 3) onMove();
  });
  const end = event => {
    const before = pointers.get(event.pointerId);
    pointers.delete(event.pointerId);
    last = null;
    if (before && event.type === "pointerup" && travel <= 3 && before.button === 0 && pointers.size === 0) {
      onClick(before.x, before.y);
    }
  };
  canvas.addEventListener("pointerup", end);
  canvas.addEventListener("pointercancel", end);
  canvas.addEventListener("contextmenu", event => event.preventDefault());
  // The page scrolls until the picture has the focus.
  canvas.addEventListener("wheel", event => {
    if (document.activeElement !== canvas && !event.ctrlKey) return;
    event.preventDefault();
    const now = position(event);
    const lines = event.deltaMode === 1 ? 30 : event.deltaMode === 2 ? 300 : 1;
    picture.zoom(Math.exp(-Math.max(-300, Math.min(300, event.deltaY * lines)) * 0.0022), now.x, now.y);
    onMove();
  }, { passive: false });
}

function addKeyboard(picture, canvas, actions) {
  const step = 24;
  canvas.addEventListener("keydown", event => {
    if (event.ctrlKey || event.metaKey || event.altKey) return;
    const move = event.shiftKey ? (x, y) => picture.pan(-x, -y) : (x, y) => picture.rotate(-x, -y);
    const keys = {
      ArrowLeft: () => move(-step, 0), ArrowRight: () => move(step, 0), ArrowUp: () => move(0, -step),
      ArrowDown: () => move(0, step), "+": () => picture.zoom(1.25), "=": () => picture.zoom(1.25),
      "-": () => picture.zoom(0.8), f: actions.fit, Home: actions.fit, 1: actions.front, 2: actions.top,
      3: actions.right, 0: actions.isometric, p: actions.perspective, Escape: actions.clear,
    };
    const action = keys[event.key.length === 1 ? event.key.toLowerCase() : event.key];
    if (!action) return;
    event.preventDefault();
    action();
  });
}

function addButton(toolbar, name, title, action, isToggle, label) {
  const button = document.createElement("button");
  button.type = "button";
  button.textContent = name;
  if (title) button.title = title;
  if (label) button.setAttribute("aria-label", label);
  if (isToggle) button.setAttribute("aria-pressed", "false");
  button.addEventListener("click", action);
  toolbar.append(button);
  return button;
}

// Replaces the drawing of the section by an interactive picture. Without WebGL the drawing remains.
async function createView(section, model) {
  await pause(); // creating a context takes long if the browser has none yet
  const canvas = document.createElement("canvas");
  const context = hasData("geometry") && hasData("three") ? createContext(canvas) : null;
  if (!context) {
    section.dataset.picture = "unavailable";
    const note = document.createElement("p");
    note.className = "note";
    note.textContent = "The interactive picture needs WebGL, which this browser does not provide.";
    section.append(note);
    return;
  }
  await pause();
  const turns = new Turns();
  const data = await parsePicture(await readBytes("geometry"), turns);
  await loadThree();
  await pause();

  const stage = document.createElement("div");
  stage.className = "stage";
  const toolbar = document.createElement("div");
  toolbar.className = "toolbar";
  toolbar.setAttribute("role", "toolbar");
  toolbar.setAttribute("aria-label", "Picture");
  canvas.tabIndex = 0;
  canvas.setAttribute("role", "img");
  canvas.setAttribute("aria-label", "Picture of the model. Arrow keys rotate, Shift and arrow keys move, plus and minus zoom.");
  const hint = document.createElement("p");
  hint.className = "hint";
  const selection = document.createElement("output");
  selection.className = "selection";
  stage.append(toolbar, canvas, selection, hint);

  const picture = new Picture(canvas, context);
  picture.showsNotes = false;
  const content = await fillPicture(picture, model, data, turns);
  if (!content) {
    section.dataset.picture = "unavailable";
    return;
  }

  let ranges = [];
  let path = null;
  let times = 1; // the number of nodes that the selected row represents
  const fit = () => {
    const isolated = picture.shared.isolated.value > 0 && ranges.length > 0;
    const boxes = content.boxesOf(isolated ? ranges : [[0, Infinity]]);
    if (!isolated && picture.showsNotes) boxes.push(...content.noteBoxes);
    picture.fit(boxes.length > 0 ? boxes : [content.whole]);
  };
  // The isometric view has the slope of a cube's diagonal.
  const look = (azimuth, elevation) => () => {
    picture.look(azimuth, elevation);
    fit();
  };
  const setPressed = (button, isPressed) => button.setAttribute("aria-pressed", String(isPressed));
  const actions = {
    fit, front: look(0, 0), top: look(0, 90), right: look(90, 0), isometric: look(45, 35.264389682754654),
    perspective: () => {
      picture.isPerspective = !picture.isPerspective;
      setPressed(perspective, picture.isPerspective);
      picture.request();
    },
    clear: () => selectNode(null, "view"),
  };
  addButton(toolbar, "Fit", "Show everything (F)", actions.fit);
  addButton(toolbar, "Front", "Front view (1)", actions.front);
  addButton(toolbar, "Top", "Top view (2)", actions.top);
  addButton(toolbar, "Right", "Right view (3)", actions.right);
  addButton(toolbar, "Isometric", "Isometric view (0)", actions.isometric);
  const perspective = addButton(toolbar, "Perspective", "Perspective or parallel projection (P)", actions.perspective, true);
  addButton(toolbar, "+", "Zoom in (+)", () => picture.zoom(1.4), false, "Zoom in");
  addButton(toolbar, "\u2212", "Zoom out (-)", () => picture.zoom(1 / 1.4), false, "Zoom out");
  if (content.hasNotes) {
    const notes = addButton(toolbar, "Annotations", "Show or hide annotations", () => {
      picture.showsNotes = !picture.showsNotes;
      setPressed(notes, picture.showsNotes);
      picture.request();
    }, true);
    picture.showsNotes = true;
    setPressed(notes, true);
  }
  const only = addButton(toolbar, "Only selection", "Show only the selected part of the structure", () => {
    picture.shared.isolated.value = picture.shared.isolated.value ? 0 : 1;
    setPressed(only, picture.shared.isolated.value > 0);
    fit();
  }, true);

  const showSelection = () => {
    picture.setSelection(ranges, content.count);
    only.disabled = ranges.length === 0;
    if (ranges.length === 0 && picture.shared.isolated.value) {
      picture.shared.isolated.value = 0;
      setPressed(only, false);
    }
    let name = "";
    if (path !== null) {
      const product = productOf(model, path);
      const steps = path.split("/");
      if (product >= 0) name = nodeName(model, product, steps.length > 1 && times === 1 ? Number(steps[steps.length - 1]) : -1);
    }
    selection.textContent = (name.length > 120 ? name.slice(0, 120) + "…" : name) + (times > 1 ? ` ×${numbers.format(times)}` : "");
    canvas.dataset.selected = path === null ? "" : path;
    picture.request();
  };
  const onSelect = event => {
    ({ path } = event.detail);
    const { levels } = event.detail;
    const found = path === null || levels ? null : content.numbers.rangeOf(path);
    ranges = levels ? content.numbers.rangesOf(levels, content.count) : found && found[1] > found[0] ? [found] : [];
    times = levels ? levels.reduce((product, uses) => product * uses.length, 1) : 1;
    showSelection();
  };
  document.addEventListener("brivet-select", onSelect);

  // While the picture moves, a slow machine draws only a part of it.
  let rest = 0;
  const onMove = () => {
    picture.setMoving(true);
    clearTimeout(rest);
    rest = setTimeout(() => picture.setMoving(false), 250);
  };
  let picks = 0;
  addMouseAndTouch(picture, canvas, async (x, y) => {
    const pick = ++picks;
    const node = await picture.pick(x, y);
    if (node !== null && pick === picks) selectNode(node < 0 ? null : content.numbers.pathOf(node), "view");
  }, onMove);
  addKeyboard(picture, canvas, actions);

  const updateTheme = () => {
    const channels = getComputedStyle(section).color.match(/[\d.]+/g).map(Number);
    const isDark = channels[0] + channels[1] + channels[2] > 384;
    const found = getComputedStyle(canvas).backgroundColor.match(/[\d.]+/g).map(each => Number(each) / 255);
    picture.setTheme(isDark, found.length === 3 ? found : isDark ? [0.09, 0.1, 0.12] : [0.975, 0.98, 0.985]);
  };
  matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => requestAnimationFrame(updateTheme));
  new MutationObserver(updateTheme).observe(document.documentElement, { attributes: true, attributeFilter: ["class", "data-theme", "style"] });
  canvas.addEventListener("webglcontextlost", event => event.preventDefault());
  canvas.addEventListener("webglcontextrestored", () => picture.request());

  hint.textContent = "Drag to rotate, Shift and drag or two fingers to move, wheel or pinch to zoom after a click, click to select.";
  for (const sentence of content.leftOut) {
    const note = document.createElement("p");
    note.className = "note";
    note.textContent = sentence;
    stage.append(note);
  }
  section.append(stage);
  section.classList.add("interactive");
  only.disabled = true;
  await pause();
  let isFirst = true;
  const resize = () => {
    const box = canvas.getBoundingClientRect();
    if (box.width === 0 || box.height === 0) return;
    picture.resize(Math.round(box.width), Math.round(box.height), Math.min(devicePixelRatio || 1, 3));
    if (isFirst) {
      isFirst = false;
      actions.isometric();
      performance.mark("picture");
      section.dataset.picture = "ready";
    }
  };
  new ResizeObserver(resize).observe(canvas);
  addEventListener("resize", resize);
  updateTheme();
  resize();
  if (selectedPath !== null) onSelect({ detail: { path: selectedPath, levels: selectedLevels } });
}
