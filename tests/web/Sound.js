// Sound by the browser's rules of autoplay. Most of what drives a page counts as a viewer's gesture;
// what is used here does not, but for keys and clicks.
"use strict";

const assert = require("node:assert/strict");

const { run } = require("./lib/cases");
const { openChromium } = require("./lib/browsers");
const { serve } = require("./lib/site");
const { visit } = require("./lib/visit");

/** In the page: what becomes of its audio context. */
function watch() {
    const Real = window.AudioContext;
    window.chunks = 0;
    window.AudioContext = class extends Real {
        constructor(options) {
            super(options);
            window.context = this;
        }

        createBufferSource() {
            ++window.chunks;
            return super.createBufferSource();
        }
    };
}

class QuietVisit {
    static async open() {
        const browser = await openChromium({ ignoreDefaultArgs: ["--mute-audio"] });
        const site = await serve();
        const quiet = new QuietVisit();
        quiet.show = await visit(browser, site.address, { prepare: watch });
        quiet.session = await quiet.show.page.createCDPSession();
        return quiet;
    }

    async ask(expression) {
        const wanted = { expression, returnByValue: true, userGesture: false };
        return (await this.session.send("Runtime.evaluate", wanted)).result.value;
    }

    async become(expression, what) {
        const end = Date.now() + 30000;
        while ((await this.ask(expression)) !== true) {
            assert(Date.now() < end, what);
            await new Promise((later) => setTimeout(later, 50));
        }
    }

    box(text) {
        return this.become(
            `(document.querySelector("dialog[open]") || {textContent: ""}).textContent.includes("${text}")`,
            `no box with ${text}`,
        );
    }

    isRunning() {
        return this.become(`context.state === "running"`, "the context does not run");
    }
}

async function TheFirstOkLetsSoundBegin() {
    const quiet = await QuietVisit.open();
    await quiet.box("Copyright");
    assert.equal(await quiet.ask("context.state"), "suspended");
    await quiet.show.page.keyboard.press("Enter");
    await quiet.isRunning();
    await quiet.box("fullskjerm");
    await quiet.show.page.keyboard.press("Escape");
    await quiet.box("WINDOW MODE");
    await quiet.show.page.keyboard.press("Escape");
    await quiet.show.printed("Loading Textures...");
    await quiet.become("chunks > 10", "nothing is played");
    assert(!quiet.show.errors.join().includes("no sound device"));
}

async function EscapeAloneIsSilentUntilAClick() {
    const quiet = await QuietVisit.open();
    for (const text of ["Copyright", "fullskjerm", "WINDOW MODE"]) {
        await quiet.box(text);
        await quiet.show.page.keyboard.press("Escape");
    }
    await quiet.show.printed("Loading Textures...");
    const end = Date.now() + 30000;
    while (!quiet.show.errors.includes("skovra: no sound device, playing silently")) {
        assert(Date.now() < end, "the viewer is not told");
        await new Promise((later) => setTimeout(later, 50));
    }
    assert.equal(await quiet.ask("chunks"), 0);
    await quiet.show.page.mouse.click(640, 500);
    await quiet.isRunning();
    await quiet.become("chunks > 10", "nothing is played");
    quiet.show.expectNothingUncaught();
}

run({ TheFirstOkLetsSoundBegin, EscapeAloneIsSilentUntilAClick });
