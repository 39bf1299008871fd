// Data elements of the page: gzip in Base64, read by their names.

const MAX_TASK = 25; // milliseconds of work before the browser gets a turn

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

// Returns the bytes of Base64 text.
function decodeBase64(text) {
  if (Uint8Array.fromBase64) return Uint8Array.fromBase64(text);
  const binary = atob(text);
  const bytes = new Uint8Array(binary.length);
  for (let i = 0; i < binary.length; ++i) bytes[i] = binary.charCodeAt(i);
  return bytes;
}

const ENCODED_PIECE = 1 << 19; // characters that are decoded at once, a multiple of 4
const LARGEST_RATIO = 1032; // of compressed data

// Returns the content of a data element as bytes. Throws if there is none, or if it is damaged.
async function readBytes(name) {
  const element = document.getElementById("data-" + name);
  if (!element) throw new Error(`the page has no data '${name}'`);
  const text = element.textContent;
  // The last four bytes are the size of the content.
  const tail = decodeBase64(text.slice(-8));
  const size = new DataView(tail.buffer).getUint32(tail.length - 4, true);
  if (size > LARGEST_RATIO * text.length) throw new Error(`the data '${name}' is damaged`);
  const stream = new DecompressionStream("gzip");
  const feed = async () => {
    const writer = stream.writable.getWriter();
    const turns = new Turns();
    for (let at = 0; at < text.length; at += ENCODED_PIECE) {
      await writer.ready;
      writer.write(decodeBase64(text.slice(at, at + ENCODED_PIECE))).catch(() => {}); // the reader reports it
      if (turns.isOver()) await turns.next();
    }
    await writer.close();
  };
  const feeding = feed().catch(() => {});
  const bytes = new Uint8Array(size);
  const reader = stream.readable.getReader();
  const turns = new Turns();
  let at = 0;
  for (let part = await reader.read(); !part.done; part = await reader.read()) {
    if (at + part.value.length > size) throw new Error(`the data '${name}' is damaged`);
    bytes.set(part.value, at);
    at += part.value.length;
    if (turns.isOver()) await turns.next();
  }
  await feeding;
  if (at !== size) throw new Error(`the data '${name}' is damaged`);
  return bytes;
}

async function readText(name) {
  return new TextDecoder("utf-8", { ignoreBOM: true }).decode(await readBytes(name));
}

async function readJson(name) {
  return JSON.parse(await readText(name));
}
