// The list of all instances, a page of it at a time.

const PAGE_ITEMS = 200;
const PAGE_ELEMENTS = 9000;   // links on one page
const ITEM_CHARACTERS = 20000; // of one item, until more is requested
const ITEM_LINKS = 400;

// Puts the pieces of an item into an element, and a button if there are more.
async function fillItem(target, blocks, index, reader, links, inReferrers = false) {
  let characters = ITEM_CHARACTERS;
  let place = inReferrers ? target.querySelector(".referrers:last-of-type") || target : target;
  for (;;) {
    const piece = reader.next(characters);
    if (piece === null) {
      if (reader.end < reader.text.length || !blocks.continues(index)) return;
      index += 1;
      const { text, starts } = await blocks.read(index);
      const begin = text.charCodeAt(1) === REFERRERS ? 1 : 0;
      reader = new ItemReader(text, begin, starts.length ? starts[0] : text.length, blocks.list[index].part);
      continue;
    }
    if (piece.isReferrers) {
      place = make("small", { class: "referrers" }, "referred to by ");
      target.append(place);
      inReferrers = true;
      continue;
    }
    if (piece.text !== undefined) {
      place.append(piece.text);
      characters -= piece.text.length;
    } else {
      place.append(piece.link === null ? piece.label
        : make("a", { href: piece.link, class: piece.isDefinition ? "id definition" : "id" }, piece.label));
      links -= 1;
      characters -= piece.label.length;
    }
    if (characters <= 0 || links <= 0) break;
  }
  const more = make("button", { type: "button", class: "more", onclick: () => {
    more.remove();
    fillItem(target, blocks, index, reader, ITEM_LINKS, inReferrers);
  } }, "Show more");
  target.append(more);
}

class InstanceList {
  constructor(section, blocks) {
    this.blocks = blocks;
    this.page = -1;
    this.pages = Math.max(1, Math.ceil(blocks.items / PAGE_ITEMS));
    this.run = 0; // of the latest request
    this.list = make("div", { class: "items", role: "list", "aria-label": "Instances" });
    this.status = make("p", { role: "status", class: "status" });
    this.number = make("input", { type: "number", min: 1, max: this.pages, "aria-label": "Page", onchange: event => {
      this.showPage(Number(event.target.value) - 1);
    } });
    this.slider = make("input", { type: "range", min: 1, max: this.pages, value: 1, "aria-label": "Position in the document",
      onchange: event => this.showPage(Number(event.target.value) - 1) });
    const button = (label, title, page) => make("button", { type: "button", title, "aria-label": title,
      onclick: () => this.showPage(page()) }, label);
    this.back = [button("«", "First page", () => 0), button("‹", "Previous page", () => this.page - 1)];
    this.forth = [button("›", "Next page", () => this.page + 1), button("»", "Last page", () => this.pages - 1)];
    this.range = make("span", { class: "range" });
    const pager = make("div", { class: "pager", role: "group", "aria-label": "Pages of instances" }, ...this.back,
      make("label", {}, "Page ", this.number, ` of ${numbers.format(this.pages)}`), ...this.forth, this.slider, this.range);
    if (this.pages === 1) pager.hidden = true;
    section.append(pager, this.status, this.list);
  }

  // Shows a page of the list. Returns false if another request came meanwhile.
  async showPage(page) {
    page = Math.min(Math.max(Number.isFinite(page) ? Math.floor(page) : 0, 0), this.pages - 1);
    if (page === this.page) { this.update(); return true; }
    const run = ++this.run;
    const content = document.createDocumentFragment();
    const turns = new Turns();
    let budget = PAGE_ELEMENTS;
    const end = Math.min(this.blocks.items, (page + 1) * PAGE_ITEMS);
    for (let item = page * PAGE_ITEMS; item < end;) {
      const index = this.blocks.indexOf(item);
      const block = await this.blocks.read(index);
      const { begin } = this.blocks.list[index];
      for (; item < end && item - begin < block.count; ++item) {
        const links = Math.max(10, Math.min(ITEM_LINKS, Math.floor(budget / 4)));
        const element = await this.makeItem(index, block, item - begin, links);
        budget -= element.childElementCount + 1;
        for (const child of element.children) budget -= child.childElementCount;
        content.append(element);
        await turns.next();
        if (run !== this.run) return false;
      }
      if (item - begin >= block.count && item < end && index + 1 >= this.blocks.list.length) break;
    }
    if (run !== this.run) return false;
    this.page = page;
    this.first = page * PAGE_ITEMS;
    this.list.replaceChildren(content);
    this.status.textContent = "";
    this.update();
    return true;
  }

  update() {
    this.number.value = this.page + 1;
    this.slider.value = this.page + 1;
    for (const button of this.back) button.disabled = this.page === 0;
    for (const button of this.forth) button.disabled = this.page === this.pages - 1;
    const ids = this.list.querySelectorAll(".definition");
    this.range.textContent = ids.length ? `${ids[0].textContent} to ${ids[ids.length - 1].textContent}` : "";
  }

  async makeItem(index, block, item, links) {
    const kind = block.kind(item);
    const reader = new ItemReader(block.text, block.starts[item], block.end(item), Math.max(block.ids[item], 0));
    if (kind === HEADING) {
      const heading = make("h3", {}, reader.next(ITEM_CHARACTERS).text);
      return make("div", { role: "listitem", class: "heading" }, heading);
    }
    const element = make("div", { role: "listitem", class: "item", tabindex: -1 });
    await fillItem(element, this.blocks, index, reader, links);
    const definition = element.querySelector(".definition");
    if (definition) element.id = definition.hash.slice(1);
    return element;
  }

  // Shows an item, marks it and moves the focus to it. Returns whether there is such an item.
  async showItem(item) {
    if (item < 0) return false;
    if (!await this.showPage(Math.floor(item / PAGE_ITEMS))) return true;
    const element = this.list.children[item - this.first];
    if (!element) return false;
    for (const each of this.list.querySelectorAll(".current")) each.classList.remove("current");
    element.classList.add("current");
    element.focus({ preventScroll: true });
    element.scrollIntoView({ block: "center" });
    return true;
  }

  // Shows what a fragment names: "123" or "n4". Returns false if it names no instance.
  async showFragment(name) {
    this.status.textContent = `Looking for #${name} …`;
    const report = part => { this.status.textContent = `Looking for #${name} … ${Math.round(100 * part)} %`; };
    let item = -1;
    if (name[0] === "n") {
      item = await this.blocks.findOrdinal(Number(name.slice(1)));
    } else {
      const number = Number(name);
      item = Number.isSafeInteger(number) ? await this.blocks.findNumber(number, report)
        : await this.blocks.findDigits(name.replace(/^0+(?=\d)/, ""));
    }
    const isShown = await this.showItem(item);
    this.status.textContent = isShown ? "" : `The document has no instance #${name}.`;
    return isShown;
  }
}
