// Tree of the products. Children that are the same product share a node.
//
// The rows are a flat list in the order of the tree; aria-level gives their depth. Children are made when a node is expanded
// for the first time, at most GROUP_ROWS at once.

const GROUP_ROWS = 200;
const FIRST_ROWS = 60; // that are expanded at first
const ROW_LINKS = 1; // to occurrences; the details have more
const DETAIL_LINKS = 50;
const ROW_DIGITS = 5; // of an extent

class StructureTree {
  constructor(section, model) {
    this.model = model;
    this.groups = new Map();
    this.current = null;
    this.tree = make("div", { role: "tree", "aria-label": "Structure", class: "tree", onkeydown: event => this.onKey(event),
      onclick: event => this.onClick(event) });
    this.details = make("div", { class: "details", "aria-live": "polite" });
    section.append(this.tree, this.details);
    this.addRows(null, model.roots.map((product, i) => ({ product, uses: [-1], path: String(i), levels: [[i]] })), 0, 1);
    this.expandFirst();
    const [first] = this.tree.children;
    if (first) first.tabIndex = 0;
    document.addEventListener("brivet-select", event => {
      if (event.detail.origin !== "tree") this.reveal(event.detail.path);
    });
  }

  // Returns the children of a product: {product, uses}, with the occurrences of equal children together.
  groupsOf(product) {
    let groups = this.groups.get(product);
    if (groups) return groups;
    const byProduct = new Map();
    for (const use of this.model.products[product].children) {
      const child = this.model.occurrences.children[use];
      const group = byProduct.get(child);
      if (group) group.uses.push(use);
      else byProduct.set(child, { product: child, uses: [use] });
    }
    groups = [...byProduct.values()];
    this.groups.set(product, groups);
    return groups;
  }

  // Adds rows for `nodes` from `begin` to `end`, at most GROUP_ROWS and a row for the rest, after the row `after`; null:
  // at the end.
  addRows(after, nodes, begin, level, end = nodes.length) {
    const last = Math.min(end, begin + GROUP_ROWS);
    const rows = nodes.slice(begin, last).map((node, i) => this.makeRow(node, level, begin + i + 1, nodes.length));
    if (last < end) rows.push(this.makeMore(nodes, last, level, end));
    if (after) after.after(...rows); else this.tree.append(...rows);
  }

  // Returns the row for nodes that have no rows yet.
  makeMore(nodes, begin, level, end) {
    const more = make("div", { role: "treeitem", "aria-level": level, tabindex: -1, class: "row more" },
      `Show more (${numbers.format(end - begin)})`);
    more.show = () => {
      const before = more.previousElementSibling;
      this.addRows(more, nodes, begin, level, end);
      more.remove();
      this.focus(before.nextElementSibling);
    };
    // Replaces this row by those around the node of an occurrence. Returns whether the occurrence is here.
    more.showUse = use => {
      let at = begin;
      while (at < end && !nodes[at].uses.includes(use)) ++at;
      if (at === end) return false;
      const first = Math.max(begin, at - Math.floor(GROUP_ROWS / 2));
      this.addRows(more, nodes, first, level, end);
      if (first > begin) more.after(this.makeMore(nodes, begin, level, first));
      more.remove();
      return true;
    };
    this.indent(more, level);
    return more;
  }

  indent(row, level) { row.style.setProperty("--level", Math.min(level - 1, 24)); }

  makeRow(node, level, position, size) {
    const { model } = this;
    const product = model.products[node.product];
    const isSingle = node.uses.length === 1;
    const name = nodeName(model, node.product, isSingle ? node.uses[0] : -1);
    const hasChildren = product.children.length > 0;
    const links = make("span", { class: "links" }, instanceLink(product.definition));
    for (const use of node.uses.slice(0, ROW_LINKS)) {
      if (use >= 0) links.append(" ", instanceLink(model.occurrences.get(use).instance));
    }
    if (node.uses.length > ROW_LINKS) links.append(" …");
    for (const link of links.children) link.tabIndex = -1;
    const row = make("div", { role: "treeitem", "aria-level": level, "aria-posinset": position, "aria-setsize": size,
      "aria-expanded": hasChildren ? "false" : null, "aria-selected": "false", tabindex: -1, class: "row" },
    make("span", { class: "toggle", "aria-hidden": "true" }), make("span", { class: "label" },
      make("span", { class: "name" }, name), isSingle ? null : make("span", { class: "times" }, ` ×${node.uses.length}`)),
    product.extent ? make("span", { class: "extent" }, sizeOf(product.extent, ROW_DIGITS)) : null, links);
    row.node = node;
    this.indent(row, level);
    return row;
  }

  levelOf(row) { return Number(row.getAttribute("aria-level")); }
  isExpanded(row) { return row.getAttribute("aria-expanded") === "true"; }
  canExpand(row) { return row.hasAttribute("aria-expanded"); }

  expand(row) {
    if (!this.canExpand(row) || this.isExpanded(row)) return;
    row.setAttribute("aria-expanded", "true");
    const nodes = this.groupsOf(row.node.product).map(group => (
      { ...group, path: `${row.node.path}/${group.uses[0]}`, levels: [...row.node.levels, group.uses] }));
    this.addRows(row, nodes, 0, this.levelOf(row) + 1);
  }

  collapse(row) {
    if (!this.isExpanded(row)) return;
    row.setAttribute("aria-expanded", "false");
    const level = this.levelOf(row);
    while (row.nextElementSibling && this.levelOf(row.nextElementSibling) > level) {
      if (row.nextElementSibling === this.current) this.focus(row);
      row.nextElementSibling.remove();
    }
  }

  expandFirst() {
    for (let level = 1; level < 8; ++level) {
      const rows = [...this.tree.querySelectorAll(`[aria-level="${level}"][aria-expanded]`)];
      let count = this.tree.childElementCount;
      if (rows.length === 0 || count + rows.length > FIRST_ROWS) return;
      for (const row of rows) count += Math.min(GROUP_ROWS, this.groupsOf(row.node.product).length);
      if (count > FIRST_ROWS) return;
      for (const row of rows) this.expand(row);
    }
  }

  focus(row) {
    if (!row) return;
    if (this.current) this.current.tabIndex = -1;
    this.current = row;
    for (const each of this.tree.querySelectorAll('[tabindex="0"]')) each.tabIndex = -1;
    row.tabIndex = 0;
    row.focus();
  }

  mark(row) {
    for (const each of this.tree.querySelectorAll('[aria-selected="true"]')) each.setAttribute("aria-selected", "false");
    this.details.replaceChildren();
    if (!row) return;
    row.setAttribute("aria-selected", "true");
    this.showDetails(row.node);
  }

  select(row) {
    if (row.show) { row.show(); return; }
    this.mark(row);
    const { path, levels } = row.node;
    selectNode(path, "tree", levels.some(uses => uses.length > 1) ? levels : null);
  }

  // Expands the tree down to a path and marks its node; null: marks nothing.
  reveal(path) {
    if (path === null) { this.mark(null); return; }
    const steps = path.split("/").map(Number);
    let row = [...this.tree.children].find(each => each.node && each.node.path === String(steps[0]));
    for (const use of steps.slice(1)) {
      if (!row) return;
      this.expand(row);
      const level = this.levelOf(row) + 1;
      let child = row.nextElementSibling;
      for (; child; child = child.nextElementSibling) {
        const depth = this.levelOf(child);
        if (depth < level) { child = null; break; }
        if (depth > level) continue;
        if (child.show) {
          const before = child.previousElementSibling;
          if (child.showUse(use)) child = before;
        } else if (child.node.uses.includes(use)) {
          break;
        }
      }
      row = child;
    }
    if (!row) return;
    this.mark(row);
    for (const each of this.tree.querySelectorAll('[tabindex="0"]')) each.tabIndex = -1;
    this.current = row;
    row.tabIndex = 0;
    this.tree.scrollTop = Math.max(0, row.offsetTop - this.tree.clientHeight / 2);
  }

  showDetails({ product, uses }) {
    const { model } = this;
    const target = model.products[product];
    const list = make("dl", { class: "facts" });
    const add = (key, ...value) => list.append(make("div", {}, make("dt", {}, key), make("dd", {}, ...value)));
    const addText = (key, text) => { if (text !== null && textOf(text) !== "") add(key, text); };
    const addCount = (key, count) => { if (count > 0) add(key, numbers.format(count)); };
    addText("Id", target.id);
    addText("Name", target.name);
    addText("Version", target.version);
    addText("Description", target.description);
    if (uses.length === 1 && uses[0] >= 0) addText("Designator", model.occurrences.get(uses[0]).designator);
    if (target.extent) add("Extent", `${sizeOf(target.extent)} ${shortUnit(model.units[target.unit])}`);
    addCount("Solids", target.solids);
    addCount("Shells", target.shells);
    addCount("Faces", target.faces);
    addCount("Edges", target.edges);
    const colours = [...new Set(target.colours.filter(index => model.colours[index])
      .map(index => model.colours[index].colour))];
    if (colours.length > 0) add("Colours", ...colours.slice(0, 12).map(makeSwatch));
    const links = [target.instance, target.definition, ...target.shapes.slice(0, 5)].filter(name => name);
    add("Instances", ...links.flatMap(name => [instanceLink(name), " "]));
    const occurrences = uses.filter(use => use >= 0);
    if (occurrences.length > 0) {
      add(occurrences.length > 1 ? "Occurrences" : "Occurrence", ...occurrences.slice(0, DETAIL_LINKS)
        .flatMap(use => [instanceLink(model.occurrences.get(use).instance), " "]), occurrences.length > DETAIL_LINKS ? "…" : "");
    }
    this.details.replaceChildren(list);
  }

  onClick(event) {
    const row = event.target.closest("[role=treeitem]");
    if (!row || event.target.closest("a")) return;
    this.focus(row);
    if (event.target.closest(".toggle") && this.canExpand(row)) {
      if (this.isExpanded(row)) this.collapse(row); else this.expand(row);
    } else {
      this.select(row);
    }
  }

  onKey(event) {
    const row = event.target.closest("[role=treeitem]");
    if (!row || event.altKey || event.ctrlKey || event.metaKey) return;
    const isLink = event.target.closest("a") !== null;
    const actions = {
      ArrowDown: () => this.focus(row.nextElementSibling),
      ArrowUp: () => this.focus(row.previousElementSibling),
      Home: () => this.focus(this.tree.firstElementChild),
      End: () => this.focus(this.tree.lastElementChild),
      ArrowRight: () => { if (this.isExpanded(row)) this.focus(row.nextElementSibling); else this.expand(row); },
      ArrowLeft: () => { if (this.isExpanded(row)) this.collapse(row); else this.focus(this.parentOf(row)); },
      Enter: () => this.select(row),
      " ": () => this.select(row),
    };
    if (!actions[event.key] || (isLink && event.key === "Enter")) return;
    event.preventDefault();
    actions[event.key]();
  }

  parentOf(row) {
    const level = this.levelOf(row);
    let before = row.previousElementSibling;
    while (before && this.levelOf(before) >= level) before = before.previousElementSibling;
    return before;
  }
}
