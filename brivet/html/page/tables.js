// Tables of properties, layers, colours, annotations, views and types, a page of rows at a time.

const TABLE_ROWS = 100;

// Colours are set by script; the policy of the page allows no style attributes.
function makeSwatch(colour) {
  const swatch = make("span", { class: "swatch", "aria-hidden": "true" });
  swatch.style.backgroundColor = colour;
  return make("span", { class: "colour" }, swatch, colour, " ");
}

class DataTable {
  // `columns`: {title, isNumber, isWord, cell: row => node or string}.
  constructor(section, label, columns, rows) {
    this.columns = columns;
    this.rows = rows;
    this.begin = 0;
    this.body = make("tbody");
    const head = make("tr", {}, ...columns.map(column => make("th", { scope: "col", class: column.isNumber ? "number" : null },
      column.title)));
    const table = make("table", {}, make("thead", {}, head), this.body);
    section.append(make("div", { class: "scroll", role: "region", tabindex: 0, "aria-label": `Table of ${label.toLowerCase()}` }, table));
    if (rows.length > TABLE_ROWS) {
      this.back = make("button", { type: "button", onclick: () => this.show(this.begin - TABLE_ROWS) }, "Previous");
      this.forth = make("button", { type: "button", onclick: () => this.show(this.begin + TABLE_ROWS) }, "Next");
      this.range = make("span", { class: "range", role: "status" });
      section.append(make("div", { class: "pager", role: "group", "aria-label": `Pages of ${label.toLowerCase()}` }, this.back, this.forth,
        this.range));
    }
    this.show(0);
  }

  show(begin) {
    this.begin = begin;
    const rows = this.rows.slice(begin, begin + TABLE_ROWS);
    this.body.replaceChildren(...rows.map(row => make("tr", {}, ...this.columns.map(column => make("td",
      { class: column.isNumber ? "number" : column.isWord ? "word" : null }, column.cell(row))))));
    if (!this.range) return;
    this.back.disabled = begin === 0;
    this.forth.disabled = begin + TABLE_ROWS >= this.rows.length;
    this.range.textContent = `${numbers.format(begin + 1)} to ${numbers.format(begin + rows.length)} of `
      + numbers.format(this.rows.length);
  }
}

const orEmpty = text => text === null ? "" : text;
const linkCell = row => row.instance ? instanceLink(row.instance) : "";

function valueText(value) {
  const text = Array.isArray(value.value) ? `(${value.value.map(number => shortNumber(number)).join(", ")})`
    : typeof value.value === "number" ? shortNumber(value.value) : orEmpty(value.value);
  return value.unit ? `${text} ${value.unit}` : text;
}

function valueCell(property) {
  const cell = make("span");
  for (const value of property.values) {
    const name = value.name !== null && value.name !== "" && value.name !== property.name ? `${value.name}: ` : "";
    cell.append(make("span", { class: "value" }, name + valueText(value)));
  }
  if (property.valueCount > property.values.length) cell.append(`… ${numbers.format(property.valueCount)} values`);
  return cell;
}

// Computed values next to stored ones. A difference is marked by its text and a class.
function computedCell(property) {
  const cell = make("span");
  for (const { check } of property.values) {
    if (check === null) continue;
    cell.append(make("span", { class: "value" }, valueText(check) + " ",
      make("span", { class: check.differs ? "check differs" : "check" }, check.text)));
  }
  return cell;
}

// Returns the names of the products and occurrences that have properties, by their instances.
async function ownersOf(model) {
  const owners = new Set(model.properties.map(property => property.product));
  const names = new Map();
  const turns = new Turns();
  for (const product of model.products) {
    if (owners.has(product.definition)) names.set(product.definition, textOf(product.name) || textOf(product.id));
    if (turns.isOver()) await turns.next();
  }
  for (let i = 0; i < model.occurrences.length && names.size < owners.size; ++i) {
    const use = model.occurrences.get(i);
    if (owners.has(use.instance)) names.set(use.instance, textOf(use.name) || textOf(use.designator));
    if (turns.isOver()) await turns.next();
  }
  return names;
}

async function addProperties(section, model) {
  const names = await ownersOf(model);
  const isChecked = model.properties.some(property => property.values.some(value => value.check !== null));
  return new DataTable(section, "Properties", [
    { title: "Name", cell: row => orEmpty(row.name) || orEmpty(row.description) },
    { title: "Value", cell: valueCell },
    ...isChecked ? [{ title: "Computed", cell: computedCell }] : [],
    { title: "Product", cell: row => make("span", {}, names.get(row.product) || "", " ", row.product ? instanceLink(row.product)
      : "") },
    { title: "Kind", isWord: true, cell: row => row.kind },
    { title: "Instance", cell: linkCell },
  ], model.properties);
}

function addLayers(section, model) {
  return new DataTable(section, "Layers", [
    { title: "Name", cell: row => orEmpty(row.name) },
    { title: "Description", cell: row => orEmpty(row.description) },
    { title: "Items", isNumber: true, cell: row => numbers.format(row.items) },
    { title: "Instance", cell: linkCell },
  ], model.layers);
}

function addColours(section, model) {
  const users = new Map(); // a few products of each colour
  for (const product of model.products) {
    for (const index of product.colours) {
      const list = users.get(index) || [];
      if (list.length <= 3) list.push(product);
      users.set(index, list);
    }
  }
  const rows = model.colours.map((colour, index) => ({ ...colour, users: users.get(index) || [] })).filter(row => row.items > 0);
  return new DataTable(section, "Colours", [
    { title: "Colour", cell: row => makeSwatch(row.colour) },
    { title: "Transparency", isNumber: true, cell: row => row.transparency > 0 ? shortNumber(row.transparency) : "" },
    { title: "Items", isNumber: true, cell: row => numbers.format(row.items) },
    { title: "Products", cell: row => row.users.length === 0 ? make("a", { href: "#search=type%3ASTYLED_ITEM" }, "styled items")
      : make("span", {}, ...row.users.slice(0, 3).flatMap(user => [textOf(user.name) || textOf(user.id), " ",
        instanceLink(user.definition), " "]), row.users.length > 3 ? "…" : "") },
  ], rows);
}

function addAnnotations(section, model) {
  if (model.annotations.length > 0) {
    new DataTable(section, "Annotations", [
      { title: "Name", cell: row => orEmpty(row.name) },
      { title: "Kind", isWord: true, cell: row => row.kind },
      { title: "Form", isWord: true, cell: row => row.form },
      { title: "Value", cell: row => orEmpty(row.value) },
      { title: "View", cell: row => orEmpty(row.view) },
      { title: "Instance", cell: linkCell },
    ], model.annotations);
  }
  if (model.views.length === 0) return;
  section.append(make("h3", {}, "Views"));
  new DataTable(section, "Views", [
    { title: "Name", cell: row => orEmpty(row.name) },
    { title: "Kind", isWord: true, cell: row => row.kind },
    { title: "Instance", cell: linkCell },
  ], model.views);
}

function addTypes(section, model) {
  return new DataTable(section, "Types", [
    { title: "Type", cell: row => make("a", { href: "#search=" + encodeURIComponent("type:" + row.name) }, row.name) },
    { title: "Instances", isNumber: true, cell: row => numbers.format(row.count) },
  ], model.types);
}
