// Data elements of the page: gzip in Base64, read by their names.

const MAX_TASK = 40; // milliseconds of work before the browser gets a turn

const pause = () => new Promise(resolve => {
  const channel = new MessageChannel();
  channel.port1.onmessage = () => { channel.port1.close(); resolve(); };
  channel.port2.postMessage(0);
});

// Gives the browser a turn if the present task has taken long.
class Turns {
  constructor(limit = MAX_TASK) { this.limit = limit; this.begin = performance.now(); }
  isOver() { return performance.now() - this.begin > this.limit; }
  async next() {
    if (!this.isOver()) return;
    await pause();
    this.begin = performance.now();
  }
}

const hasData = name => document.getElementById("data-" + name) !== null;

// Returns the bytes of Base64 text. Large texts are decoded in pieces.
async function decodeBase64(text) {
  const padding = text.endsWith("==") ? 2 : text.endsWith("=") ? 1 : 0;
  const bytes = new Uint8Array(text.length / 4 * 3 - padding);
  const turns = new Turns();
  const PIECE = 1 << 20; // a multiple of 4
  for (let at = 0; at < text.length; at += PIECE) {
    const piece = text.slice(at, at + PIECE);
    if (Uint8Array.fromBase64) {
      bytes.set(Uint8Array.fromBase64(piece), at / 4 * 3);
    } else {
      const binary = atob(piece);
      for (let i = 0, to = at / 4 * 3; i < binary.length; ++i, ++to) bytes[to] = binary.charCodeAt(i);
    }
    await turns.next();
  }
  return bytes;
}

// Returns the content of a data element as bytes. Throws if there is none.
async function readBytes(name) {
  const element = document.getElementById("data-" + name);
  if (!element) throw new Error(`the page has no data '${name}'`);
  const packed = await decodeBase64(element.textContent);
  const stream = new Blob([packed]).stream().pipeThrough(new DecompressionStream("gzip"));
  return new Uint8Array(await new Response(stream).arrayBuffer());
}

async function readText(name) {
  return new TextDecoder("utf-8", { ignoreBOM: true }).decode(await readBytes(name));
}

async function readJson(name) {
  return JSON.parse(await readText(name));
}
