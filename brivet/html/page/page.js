// Starts the page.

let selected = null; // path of the selected node

function selectNode(path, origin) {
  selected = path;
  document.dispatchEvent(new CustomEvent("brivet-select", { detail: { path, origin } }));
}

async function startPage() {
  const model = await readModel();
  const view = document.getElementById("view");
  if (view && hasData("three") && typeof createView === "function") {
    createView(view, model).catch(error => console.warn(error));
  }
  document.documentElement.dataset.ready = "true"; // for tests
}

startPage();
