// Starts the page: reads the model, fills the sections and follows the address.

const section = name => document.getElementById(name);

let selectedPath = null;
let selectedLevels = null;

// Selects a node of the structure: "0" is the first root, "0/12" its child by occurrence 12; null selects nothing.
// `origin`: "tree", "view" or "address". `levels` is null, or selects all nodes of a row of the tree: the position of the
// root, then for each level the occurrences of equal children.
function selectNode(path, origin, levels = null) {
  if (path === selectedPath && levels === selectedLevels && origin === "view") return;
  selectedPath = path;
  selectedLevels = levels;
  const detail = levels ? { path, origin, levels } : { path, origin };
  document.dispatchEvent(new CustomEvent("brivet-select", { detail }));
}

function addContents() {
  const contents = section("contents");
  for (const each of document.querySelectorAll("main > section")) {
    contents.append(make("a", { href: "#" + each.id }, each.querySelector("h2").textContent));
  }
}

// Shows what the address names. Sections are left to the browser.
async function followAddress(parts) {
  const fragment = location.hash.slice(1);
  const instance = /^(?:n[1-9]\d*|\d+)$/.exec(fragment);
  if (instance) {
    if (parts.list) await parts.list.showFragment(fragment);
  } else if (fragment.startsWith("item=")) {
    if (parts.list) await parts.list.showItem(Number(fragment.slice(5)));
  } else if (fragment.startsWith("search=")) {
    let text = fragment.slice(7);
    try { text = decodeURIComponent(text); } catch { /* shown as it is */ }
    if (!parts.search) return;
    section("search").scrollIntoView({ block: "start" });
    await parts.search.start(text);
  } else if (fragment.startsWith("node=")) {
    selectNode(fragment.slice(5), "address");
  } else {
    const target = fragment === "" ? null : document.getElementById(fragment);
    if (target && target.matches("main > section")) target.scrollIntoView();
  }
}

async function startPage() {
  if (typeof DecompressionStream === "undefined") throw new Error("this browser cannot decompress data");
  const parts = { list: null, search: null };
  const instances = openSection("instances");
  if (instances) {
    const blocks = new Blocks();
    parts.list = new InstanceList(instances, blocks);
    parts.search = new Search(openSection("search"), blocks, parts.list);
    await parts.list.showPage(0);
    performance.mark("contents");
  }
  const model = await readModel();
  const fillers = { structure: (target, data) => new StructureTree(target, data), properties: addProperties,
    layers: addLayers, colours: addColours, annotations: addAnnotations, types: addTypes };
  for (const [name, fill] of Object.entries(fillers)) {
    const target = openSection(name);
    if (!target) continue;
    await fill(target, model);
    await pause();
  }
  addContents();
  const view = section("view");
  if (view && hasData("three") && typeof createView === "function") {
    createView(view, model).catch(error => console.warn("The interactive picture is not available:", error.message));
  }
  addEventListener("hashchange", () => followAddress(parts));
  document.addEventListener("click", event => {
    const link = event.target.closest("a[href^='#']");
    // The browser reports no change if the link leads to the present address.
    if (link && link.getAttribute("href") === location.hash) followAddress(parts);
  });
  if (location.hash !== "") await followAddress(parts);
  performance.mark("sections");
  document.documentElement.dataset.ready = "true";
}

startPage().catch(error => {
  section("summary").append(make("p", { class: "banner", role: "alert" }, `The page cannot show its data: ${error.message}.`));
  throw error;
});
