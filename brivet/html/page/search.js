// Search in all instances: ids, types and text.
//
// "#12" finds the instance and those that refer to it; "type:LINE" the instances of a type; anything else what contains it,
// in any case. The blocks are read one after the other in short tasks.

const LISTED_HITS = 1000;
const HITS_SHOWN = 50;
const SNIPPET = 160; // characters

const escapePattern = text => text.replace(/[.*+?^${}()|[\]\\/]/g, "\\$&");

// What a search looks for.
class Query {
  constructor(text) {
    this.text = text.trim();
    const type = /^type:\s*(.+)$/i.exec(this.text);
    const id = /^#(\d+)$/.exec(this.text);
    this.type = type ? type[1].toUpperCase() : null;
    const source = type ? escapePattern(this.type.replace(/^\(/, "").split(" ")[0].replace(/\)$/, ""))
      : id ? `#${id[1]}(?!\\d)` : escapePattern(this.text);
    this.pattern = new RegExp(source, "iu");
    // Ids are stored as differences, so that only a search without digits can use the stored text; one for an id can
    // compute the difference.
    this.isStored = !/[#\d]/.test(type ? this.type : this.text);
    this.id = id && Number.isSafeInteger(Number(id[1])) ? Number(id[1]) : -1;
  }

  // Returns whether some item of a block can match.
  mayMatchBlock(block) { return !this.isStored || this.pattern.test(block.text); }

  // Returns false if an item cannot match; its text need not be decoded then.
  mayMatch(block, item) {
    if (this.isStored) return this.pattern.test(block.text.slice(block.starts[item], block.end(item)));
    if (this.id < 0) return true;
    const own = block.ids[item];
    if (own === this.id || own < 0) return true;
    const stored = block.text.slice(block.starts[item], block.end(item));
    return stored.includes(String.fromCharCode(REFERENCE) + (own - this.id)) || stored.includes("#" + this.id);
  }

  // Returns where the text of an item matches, or -1.
  match(text, isInstance) {
    if (this.type === null) return text.search(this.pattern);
    return isInstance && typeOf(text) === this.type ? 0 : -1;
  }
}

class Search {
  constructor(section, blocks, list) {
    this.blocks = blocks;
    this.list = list;
    this.run = 0;
    this.hits = [];
    this.input = make("input", { type: "search", id: "search-input", name: "search", autocomplete: "off", spellcheck: "false",
      placeholder: "#12, a type or text", "aria-describedby": "search-help" });
    this.progress = make("progress", { max: 1, value: 0, hidden: true, "aria-label": "Search progress" });
    this.stop = make("button", { type: "button", hidden: true, onclick: () => this.cancel() }, "Stop");
    this.status = make("p", { role: "status", id: "search-hits", class: "status" });
    this.results = make("ol", { class: "hits", "aria-label": "Hits" });
    this.more = make("button", { type: "button", hidden: true, onclick: () => this.showMore() }, "Show more hits");
    const form = make("form", { role: "search", onsubmit: event => {
      event.preventDefault();
      const fragment = "#search=" + encodeURIComponent(this.input.value.trim());
      if (location.hash === fragment) this.start(this.input.value);
      else location.hash = fragment;
    } }, make("label", { for: "search-input", class: "hidden" }, "Search in all instances"), this.input,
    make("button", { type: "submit" }, "Search"), this.stop, this.progress);
    section.append(form, make("p", { id: "search-help", class: "note" },
      "Finds ids (#12), types and text. “type:LINE” finds the instances of one type."), this.status, this.results, this.more);
  }

  cancel() {
    ++this.run;
    this.progress.hidden = this.stop.hidden = true;
    if (this.isRunning) this.status.textContent += " (stopped)";
    this.isRunning = false;
  }

  async start(text) {
    this.cancel();
    const run = this.run;
    this.input.value = text;
    this.hits = [];
    this.count = 0;
    this.shown = 0;
    this.results.replaceChildren();
    this.more.hidden = true;
    const query = new Query(text);
    this.status.textContent = "";
    if (query.text === "") return;
    this.isRunning = true;
    this.progress.value = 0;
    this.progress.hidden = this.stop.hidden = false;
    const turns = new Turns();
    let last = -1; // the item of the last hit
    let reported = performance.now();
    for (let index = 0; index < this.blocks.list.length; ++index) {
      const block = await this.blocks.read(index, false);
      // Small blocks arrive in the same task.
      if (turns.isOver()) await turns.next();
      if (run !== this.run) return;
      const { begin, part } = this.blocks.list[index];
      if (part >= 0 && last !== begin - 1) {
        // The rest of an item that began in a block before.
        const rest = new ItemReader(block.text, 0, block.count ? block.starts[0] : block.text.length, part);
        let text = "";
        for (let piece = rest.next(); piece && !piece.isReferrers; piece = rest.next()) text += piece.text || piece.label;
        if (query.type === null && query.match(text, true) >= 0) last = this.add(begin - 1, text, query);
      }
      if (query.mayMatchBlock(block)) {
        for (let item = 0; item < block.count; ++item) {
          const kind = block.kind(item);
          if (kind !== HEADING && query.mayMatch(block, item)) {
            const text = plainText(block, item);
            if (query.match(text, kind === INSTANCE) >= 0) last = this.add(begin + item, text, query);
          }
          if (turns.isOver()) {
            await turns.next();
            if (run !== this.run) return;
          }
        }
      }
      if (performance.now() - reported > 200) {
        reported = performance.now();
        this.report((index + 1) / this.blocks.list.length);
      }
    }
    this.isRunning = false;
    this.progress.hidden = this.stop.hidden = true;
    this.report(1);
    section("search").dataset.done = this.input.value;
  }

  report(part) {
    this.progress.value = part;
    const listed = this.count > LISTED_HITS ? `, the first ${numbers.format(LISTED_HITS)} are listed` : "";
    this.status.textContent = counted(this.count, "hit") + listed + (part < 1 ? ` … ${Math.round(100 * part)} %` : "");
    if (this.shown < HITS_SHOWN) this.showMore();
    this.more.hidden = this.shown >= this.hits.length;
  }

  add(item, text, query) {
    this.count += 1;
    if (this.hits.length < LISTED_HITS) {
      const at = Math.max(0, query.match(text, true));
      const begin = at < SNIPPET - 40 ? 0 : at - 40;
      const length = query.type === null ? Math.min(query.text.length, SNIPPET) : 0;
      this.hits.push({ item, snippet: text.slice(begin, begin + SNIPPET), isCut: text.length > begin + SNIPPET, begin,
        mark: at - begin, length });
    }
    return item;
  }

  showMore() {
    const end = Math.min(this.hits.length, this.shown + HITS_SHOWN);
    for (; this.shown < end; ++this.shown) this.results.append(this.makeHit(this.hits[this.shown]));
    this.more.hidden = this.shown >= this.hits.length;
  }

  makeHit({ item, snippet, isCut, begin, mark, length }) {
    const id = begin === 0 ? /^#(\d+(?:\.\.\.)?)/.exec(snippet) : null;
    const link = make("a", { href: id && Number.isSafeInteger(Number(id[1])) ? "#" + Number(id[1]) : "#item=" + item },
      begin > 0 ? "… " : "", snippet.slice(0, mark), make("mark", {}, snippet.slice(mark, mark + length)),
      snippet.slice(mark + length), isCut ? " …" : "");
    return make("li", {}, link);
  }
}
