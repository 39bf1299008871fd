// Elements of the page. Strings of the document only ever become text nodes and values of attributes that do not execute.

// Returns a new element. Attributes that are null are left out; "on..." are listeners; children are nodes or strings.
function make(tag, attributes, ...children) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes || {})) {
    if (value === null || value === false) continue;
    if (name.startsWith("on")) element.addEventListener(name.slice(2), value);
    else element.setAttribute(name, value === true ? "" : value);
  }
  element.append(...children.filter(child => child !== null));
  return element;
}

const numbers = new Intl.NumberFormat("en");
const counted = (count, thing) => `${numbers.format(count)} ${thing}${count === 1 ? "" : "s"}`;

// Returns a number with at most this many significant digits.
const shortNumber = (number, digits = 6) => typeof number === "number" ? String(Number(number.toPrecision(digits))) : "";

// Returns a link to an instance, "#12".
const instanceLink = name => make("a", { href: name, class: "id" }, name);

// Returns the size of an extent: "20 × 30 × 5".
const sizeOf = (extent, digits = 6) => [0, 1, 2].map(i => shortNumber(extent[i + 3] - extent[i], digits)).join(" × ");

// Short forms of common units.
const SHORT_UNITS = { millimetre: "mm", centimetre: "cm", metre: "m", micrometre: "µm", kilometre: "km" };
const shortUnit = name => SHORT_UNITS[name] || name || "";

// Returns the section of that name, or null; shows it.
function openSection(name) {
  const section = document.getElementById(name);
  if (section) section.hidden = false;
  return section;
}
