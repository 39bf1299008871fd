// Blocks of instances, as the C++ class InstanceBlocks writes them, and their index.

const INSTANCE = 1, LINE = 2, HEADING = 3, DEFINITION = 4, REFERENCE = 5, FAR_DEFINITION = 6, FAR_REFERENCE = 7, REFERRERS = 8;
const CACHED_BLOCKS = 6;

// A block that was read: its text, and where its items begin.
class Block {
  constructor(text, isPart) {
    this.text = text;
    this.starts = [];
    this.ids = []; // of each item: its number, or -1
    let previous = 0;
    const marks = /[\x01-\x03]/g;
    if (isPart) marks.lastIndex = 1;
    for (let found = marks.exec(text); found; found = marks.exec(text)) {
      const start = found.index;
      let id = -1;
      if (text.charCodeAt(start + 2) === DEFINITION && text[start + 1] === "#") {
        previous += parseInt(text.slice(start + 3, start + 24), 10);
        id = previous;
      }
      this.starts.push(start);
      this.ids.push(id);
    }
  }
  get count() { return this.starts.length; }
  kind(item) { return this.text.charCodeAt(this.starts[item]); }
  end(item) { return item + 1 < this.count ? this.starts[item + 1] : this.text.length; }
}

// Reads the pieces of an item one after the other.
class ItemReader {
  // `position` is that of the item's mark, `own` the number of its instance, `end` where it ends in the block.
  constructor(text, position, end, own) {
    this.text = text;
    this.at = position + 1;
    this.end = end;
    this.own = own;
    this.marks = /[\x04-\x08]/g;
  }

  // Returns {text}, {link, label, isDefinition}, {isReferrers}, or null at the end. Labels and links begin with "#". A text
  // has at most `limit` characters.
  next(limit = Infinity) {
    if (this.at >= this.end) return null;
    this.marks.lastIndex = this.at;
    const found = this.marks.exec(this.text);
    const stop = found && found.index < this.end ? found.index : this.end;
    if (stop > this.at) {
      const until = Math.min(stop, this.at + limit);
      let text = this.text.slice(this.at, until);
      this.at = until;
      // The number sign before an id belongs to its label.
      if (until === stop && stop < this.end && text.endsWith("#") && this.text.charCodeAt(stop) !== REFERRERS) {
        text = text.slice(0, -1);
      }
      if (text !== "") return { text };
      return this.next(limit);
    }
    const mark = this.text.charCodeAt(stop);
    if (mark === REFERRERS) {
      this.at = stop + 1;
      return { isReferrers: true };
    }
    const isDefinition = mark === DEFINITION || mark === FAR_DEFINITION;
    if (mark === FAR_DEFINITION || mark === FAR_REFERENCE) {
      const colon = this.text.indexOf(":", stop);
      const semicolon = this.text.indexOf(";", colon);
      const ordinal = this.text.slice(stop + 1, colon);
      const label = "#" + this.text.slice(colon + 1, semicolon);
      this.at = semicolon + 1;
      return { link: ordinal === "0" ? null : "#n" + ordinal, label, isDefinition };
    }
    let digits = stop + 1;
    if (this.text[digits] === "-") ++digits;
    while (digits < this.end && this.text.charCodeAt(digits) >= 48 && this.text.charCodeAt(digits) <= 57) ++digits;
    const number = parseInt(this.text.slice(stop + 1, digits), 10);
    this.at = digits;
    const label = "#" + (isDefinition ? this.own : this.own - number);
    return { link: label, label, isDefinition };
  }
}

// The text of an item as it is shown, without its referrers.
function plainText(block, item) {
  const reader = new ItemReader(block.text, block.starts[item], block.end(item), Math.max(block.ids[item], 0));
  let text = "";
  for (let piece = reader.next(); piece && !piece.isReferrers; piece = reader.next()) text += piece.text || piece.label;
  return text;
}

// Returns the type of an instance from its text, as the types of the document are named: "A" or "(A B)".
function typeOf(text) {
  const begin = text.indexOf(" = ") + 3;
  if (begin < 3) return "";
  if (text[begin] !== "(") return text.slice(begin, text.indexOf("(", begin));
  const names = [];
  for (let at = begin + 1, depth = 0, name = at; at < text.length; ++at) {
    const c = text[at];
    if (c === "'") {
      at = text.indexOf("'", at + 1);
      if (at < 0) break;
    } else if (c === "(") {
      if (depth++ === 0) names.push(text.slice(name, at).trim());
    } else if (c === ")") {
      if (depth-- === 0) break;
      if (depth === 0) name = at + 1;
    }
  }
  return `(${names.join(" ")})`;
}

// All blocks: which one has an item, and the items of an id.
class Blocks {
  constructor() {
    this.list = [];
    this.items = 0;
    this.cache = new Map();
    for (let i = 0; ; ++i) {
      const element = document.getElementById("data-instances-" + i);
      if (!element) break;
      const { items, first, low, high, far, part } = element.dataset;
      this.list.push({
        name: "instances-" + i, begin: this.items, items: Number(items), first: Number(first || 0),
        low: low === undefined ? Infinity : Number(low), high: high === undefined ? -1 : Number(high),
        hasFar: far !== undefined, part: part === undefined ? -1 : Number(part),
      });
      this.items += Number(items);
    }
  }

  // Returns a block. The last ones that were read are kept, unless `keep` is false.
  async read(index, keep = true) {
    let block = this.cache.get(index);
    if (!block) {
      const entry = this.list[index];
      block = new Block(await readText(entry.name), entry.part >= 0);
      if (!keep) return block;
    }
    this.cache.delete(index);
    this.cache.set(index, block);
    if (this.cache.size > CACHED_BLOCKS) this.cache.delete(this.cache.keys().next().value);
    return block;
  }

  // Returns the index of the block in which an item begins.
  indexOf(item) {
    let low = 0, high = this.list.length - 1;
    while (low < high) {
      const middle = (low + high + 1) >> 1;
      if (this.list[middle].begin <= item) low = middle; else high = middle - 1;
    }
    while (low > 0 && this.list[low].items === 0) --low;
    return low;
  }

  // Returns whether the last item of a block continues in the next one.
  continues(index) { return index + 1 < this.list.length && this.list[index + 1].part >= 0; }

  // Returns the item that defines a number, or -1.
  async findNumber(number, report = () => {}) {
    const turns = new Turns();
    for (let i = 0; i < this.list.length; ++i) {
      if (turns.isOver()) await turns.next();
      const entry = this.list[i];
      if (number < entry.low || number > entry.high) continue;
      const item = (await this.read(i)).ids.indexOf(number);
      if (item >= 0) return entry.begin + item;
      report(i / this.list.length);
    }
    return -1;
  }

  // Returns the item of the instance at a position in the document, from 1, or -1.
  async findOrdinal(ordinal) {
    let found = -1;
    this.list.forEach((entry, i) => { if (entry.first > 0 && entry.first <= ordinal) found = i; });
    if (found < 0) return -1;
    const block = await this.read(found);
    for (let item = 0, next = this.list[found].first; item < block.count; ++item) {
      if (block.kind(item) === INSTANCE && next++ === ordinal) return this.list[found].begin + item;
    }
    return -1;
  }

  // Returns the item whose id has more digits than a number can have, or -1.
  async findDigits(digits) {
    const shown = digits.length <= 40 ? digits : digits.slice(0, 20) + "...";
    const turns = new Turns();
    for (let i = 0; i < this.list.length; ++i) {
      if (!this.list[i].hasFar) continue;
      if (turns.isOver()) await turns.next();
      const { text } = await this.read(i);
      const end = text.indexOf(`:${shown};`);
      for (let at = end; at >= 0; at = text.indexOf(`:${shown};`, at + 1)) {
        const mark = text.lastIndexOf(String.fromCharCode(FAR_DEFINITION), at);
        const ordinal = text.slice(mark + 1, at);
        if (mark >= 0 && /^\d+$/.test(ordinal)) return this.findOrdinal(Number(ordinal));
      }
    }
    return -1;
  }
}
