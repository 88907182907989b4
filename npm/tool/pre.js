// Runs before the tool: passes signals to it, so that it removes its temporary files before it ends, and lets it ask what
// its standard streams are.
const signalNumbers = { SIGINT: 2, SIGTERM: 15 };

function endBySignal(number) {
  const name = Object.keys(signalNumbers).find((key) => signalNumbers[key] === number);
  process.removeAllListeners(name);
  process.kill(process.pid, name);
}

// Emscripten asks for a file's kind by its path, and its standard streams have none. It would take destructured names in
// a function for unused.
function describeStandardStreams() {
  const statFile = FS.stat;
  for (let descriptor = 0; descriptor < 3; ++descriptor) FS.streams[descriptor].path = `/dev/fd/${descriptor}`;
  FS.stat = (path) => (/^\/dev\/fd\/[012]$/.test(path) ? require("fs").fstatSync(Number(path.slice(-1))) : statFile(path));
}

if (require("worker_threads").isMainThread) {
  // Emscripten takes Node's `fetch` for a browser's, which could fetch a file.
  Module["wasmBinary"] = require("fs").readFileSync(`${__dirname}/ozmira.wasm`);
  Module["onRuntimeInitialized"] = describeStandardStreams;
  for (const [name, number] of Object.entries(signalNumbers)) {
    process.on(name, () => {
      const deliver = Module["_deliver_signal"];
      if (!deliver || !deliver(number)) endBySignal(number);
    });
  }
}
