// Loads a program and its resources, runs it in the page, and tells the viewer what becomes of it.
"use strict";

const elementOf = (id) => document.getElementById(id);

const sentences = {
    tooOld: "This browser is too old for the show: it has no WebAssembly.",
    withoutWebGl: "This browser cannot draw the show: it needs WebGL 2, which is missing or switched off.",
    damaged: "A file of this page is missing or damaged. Please try again later, or tell whoever put it here.",
    unreachable: "The show could not be loaded: the connection is broken, or a file is missing. Please load this page again later.",
    slow: "Nothing has come for a while. The show begins as soon as the rest is here.",
    music: "The show ended because its music could not be played: the file is missing or damaged.",
    picture: "A picture is missing or damaged: the show plays without it.",
    shortMusic: "The music is damaged, and may end early. Escape leaves the show.",
    contextLost: "The browser has taken its graphics away. The show goes on, and is seen again if they come back.",
    failed: "The show has failed. Loading this page again may help; the browser's console says more.",
};

const slowMs = 20000;

let isOver = false; // the program has ended, or cannot begin

function say(sentence) {
    elementOf("message").textContent = sentence;
}

// Unless something else has been said since.
function unsay(sentence) {
    if (elementOf("message").textContent === sentence) {
        say("");
    }
}

function fail(sentence, reason) {
    if (isOver) {
        return;
    }
    isOver = true;
    if (reason) {
        console.error(String(reason.stack || reason));
    }
    leave(); // if it still runs
    endProgress();
    showWindow(false);
    say(sentence);
}

class Unreachable extends Error {}

// Loading ------------------------------------------------------------------------------------------

const progress = { expectedBytes: 0, bytes: 0, timer: 0 };

function showProgress(bytes) {
    progress.bytes += bytes;
    elementOf("progress").value = Math.min(1, progress.bytes / progress.expectedBytes);
    clearTimeout(progress.timer);
    progress.timer = setTimeout(say, slowMs, sentences.slow);
}

function endProgress() {
    clearTimeout(progress.timer);
    elementOf("loading").hidden = true;
    unsay(sentences.slow);
}

// The answer with its body counted as it comes, and of the type that it ought to have.
function counted(response, type) {
    const counter = new TransformStream({
        transform(chunk, controller) {
            showProgress(chunk.length);
            controller.enqueue(chunk);
        },
    });
    return new Response(response.body.pipeThrough(counter), { headers: { "Content-Type": type } });
}

async function loadProgram(url) {
    let response;
    try {
        response = await fetch(url);
    } catch (reason) {
        throw new Unreachable(reason);
    }
    if (!response.ok) {
        throw new Error(`${url}: ${response.status}`);
    }
    return WebAssembly.compileStreaming(counted(response, "application/wasm"));
}

// What a file of that name is to the program: its bytes, missing, or there and not to be read.
async function loadFile(url) {
    try {
        const response = await fetch(url);
        if (response.status === 404 || response.status === 410) {
            return { missing: true };
        }
        if (response.ok) {
            const body = await counted(response, "application/octet-stream").arrayBuffer();
            return { bytes: new Uint8Array(body) };
        }
    } catch (reason) {
        console.error(`${url}: ${reason}`);
    }
    return { unreadable: true };
}

async function decodePicture(file) {
    if (!file.bytes) {
        return null;
    }
    try {
        const options = { premultiplyAlpha: "none", colorSpaceConversion: "none" };
        return await createImageBitmap(new Blob([file.bytes], { type: "image/png" }), options);
    } catch (reason) {
        return null;
    }
}

function loadScript(url) {
    return new Promise((resolve, reject) => {
        const script = document.createElement("script");
        script.src = url;
        script.onload = resolve;
        script.onerror = () => reject(new Unreachable(url));
        document.head.append(script);
    });
}

// The files, and what the browser makes of those that are pictures.
async function loadResources(links) {
    const files = {};
    const pictures = {};
    await Promise.all(links.map(async (link) => {
        const name = link.dataset.resource;
        files[name] = await loadFile(link.href);
        files[name].isWhole = (files[name].bytes || "").length === Number(link.dataset.bytes);
        if (name.endsWith(".png")) {
            pictures[`/resources/${name}`] = await decodePicture(files[name]);
        }
    }));
    return { files, pictures };
}

// Takes some browsers a third of a second: meanwhile the files come. The bar is shown before.
async function makeContext() {
    await new Promise((painted) => requestAnimationFrame(() => setTimeout(painted, 0)));
    // Or else it does not come back.
    elementOf("canvas").addEventListener("webglcontextlost", (event) => event.preventDefault());
    return elementOf("canvas").getContext("webgl2", {
        alpha: false,
        depth: true,
        stencil: false,
        antialias: false,
        preserveDrawingBuffer: false,
    });
}

async function load() {
    const links = [...document.querySelectorAll("link[data-bytes]")];
    progress.expectedBytes = links.reduce((sum, link) => sum + Number(link.dataset.bytes), 0);
    showProgress(0);
    const program = document.body.dataset.program;
    const [compiled, resources, context] = await Promise.all([
        loadProgram(links.find((link) => !link.dataset.resource).href),
        loadResources(links.filter((link) => link.dataset.resource)),
        makeContext(),
        loadScript(`${program}.js`),
    ]);
    endProgress();
    if (!getComputedStyle(document.documentElement).getPropertyValue("--style-is-complete")) {
        throw new Error("style.css");
    }
    return { compiled, context, ...resources };
}

// Running ------------------------------------------------------------------------------------------

// Calls write for each line; characters come as bytes, and stay one each.
class Lines {
    constructor(write) {
        this.write = write;
        this.line = "";
    }

    add(byte) {
        if (byte === 10) {
            this.write(this.line);
            this.line = "";
        } else if (byte !== null) {
            this.line += String.fromCharCode(byte & 255);
        }
    }

    flush() {
        if (this.line !== "") {
            this.add(10);
        }
    }
}

// What belongs to the window is shown as long as that.
function showWindow(isShown) {
    document.body.classList.toggle("playing", isShown);
    for (const id of ["stage", "leave", "controls"]) {
        if (elementOf(id)) {
            elementOf(id).hidden = !isShown;
        }
    }
}

// To the program closing its window is Escape.
function leave() {
    window.dispatchEvent(new KeyboardEvent("keydown", { key: "Escape" }));
}

async function listDownloads() {
    const response = await fetch("downloads.json");
    for (const download of response.ok ? await response.json() : []) {
        const url = new URL(download.file, document.baseURI);
        if (url.protocol !== "http:" && url.protocol !== "https:") {
            continue;
        }
        const link = document.createElement("a");
        link.href = url.href;
        link.textContent = download.name;
        const item = document.createElement("li");
        item.append(link);
        elementOf("downloads").append(item);
        elementOf("downloads").hidden = false;
    }
}

// With the status 1 the program ends for want of a display, with 255 because of the music.
function end(status) {
    if (isOver) {
        return;
    }
    if (status !== 0) {
        fail(status === 1 ? sentences.withoutWebGl : sentences.music);
        return;
    }
    isOver = true;
    showWindow(false);
    elementOf("end").hidden = false;
    elementOf("again").focus();
    listDownloads().catch(() => {}); // nothing was put beside the page
}

function run(loaded) {
    const output = new Lines((line) => console.log(line));
    const errors = new Lines((line) => console.error(line));
    const onThrown = (thrown) => {
        output.flush();
        errors.flush();
        if (thrown !== "unwind" && thrown.name !== "ExitStatus") {
            fail(sentences.failed, thrown);
        }
    };
    return SkovraProgram({
        thisProgram: document.body.dataset.program,
        canvas: elementOf("canvas"),
        context: loaded.context,
        files: loaded.files,
        pictures: loaded.pictures,
        instantiateWasm(imports, receive) {
            WebAssembly.instantiate(loaded.compiled, imports).then(receive).catch(onThrown);
            return {};
        },
        stdout: (byte) => output.add(byte),
        stderr: (byte) => errors.add(byte),
        quit(status, thrown) { // also while main waits for a box
            onThrown(thrown);
            throw thrown;
        },
        onExit: (status) => end(status & 255),
        onThrown,
        onWindow: () => showWindow(true),
        onContextLost: (isLost) => (isLost ? say : unsay)(sentences.contextLost),
        isOver: () => isOver,
    });
}

function begin(loaded) {
    if (isOver) {
        return undefined;
    }
    const damaged = Object.keys(loaded.files).filter((name) => !loaded.files[name].isWhole);
    if (damaged.some((name) => name.endsWith(".mp3"))) {
        say(sentences.shortMusic);
    } else if (damaged.length > 0 || Object.values(loaded.pictures).includes(null)) {
        say(sentences.picture);
    }
    return run(loaded);
}

async function agreement() {
    if (elementOf("motion") && matchMedia("(prefers-reduced-motion: reduce)").matches) {
        elementOf("motion").hidden = false;
        elementOf("begin").focus();
        await new Promise((resolve) => elementOf("begin").addEventListener("click", resolve));
        elementOf("motion").hidden = true;
    }
}

async function start() {
    elementOf("fallback").remove();
    elementOf("loading").hidden = false;
    elementOf("again").addEventListener("click", () => location.reload());
    if (elementOf("leave")) {
        elementOf("leave").addEventListener("click", leave);
    }
    if (typeof WebAssembly !== "object") {
        fail(sentences.tooOld);
        return;
    }
    try {
        const loaded = await load();
        await agreement();
        await begin(loaded);
    } catch (reason) {
        fail(reason instanceof Unreachable ? sentences.unreachable : sentences.damaged, reason);
    }
}

window.addEventListener("error", (event) => {
    if (event.target.defer) { // a script of the page itself
        fail(sentences.damaged, event.target.src);
    } else if (event.error) {
        event.preventDefault();
        fail(event.error instanceof SyntaxError ? sentences.damaged : sentences.failed, event.error);
    }
}, true);
window.addEventListener("unhandledrejection", (event) => {
    event.preventDefault();
    fail(sentences.failed, event.reason);
});

start();
