// Sound by the browser's rules of autoplay. Most of what drives a page counts as a viewer's gesture;
// what is used here does not, but for keys and clicks.
"use strict";

const assert = require("node:assert/strict");

const { run } = require("./lib/cases");
const { openChromium } = require("./lib/browsers");
const { serve } = require("./lib/site");
const { open, visit, watchAudio } = require("./lib/visit");

class QuietVisit {
    static async open() {
        const browser = await openChromium({ ignoreDefaultArgs: ["--mute-audio"] });
        const site = await serve();
        const quiet = new QuietVisit();
        quiet.show = await visit(browser, site.address, { prepare: watchAudio });
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

/** Where a browser slows timers down, and draws nothing. */
async function GoesOnInTheBackground() {
    const show = await open({
        browser: { ignoreDefaultArgs: ["--mute-audio"] },
        prepare: watchAudio,
    });
    await show.answerBoxes(false);
    await show.playing();
    await show.page.waitForFunction(() => window.chunks > 20, { timeout: 30000 });
    const now = () =>
        show.page.evaluate(() => ({
            chunks: window.chunks,
            seconds: window.context.currentTime,
            hidden: document.hidden,
        }));
    const other = await show.page.browser().newPage();
    await other.bringToFront();
    const begin = await now();
    assert(begin.hidden);
    await new Promise((later) => setTimeout(later, 8000));
    const end = await now();
    const scheduled = ((end.chunks - begin.chunks) * 4096) / 44100;
    assert(scheduled > 0.9 * (end.seconds - begin.seconds), `${scheduled} s in ${end.seconds - begin.seconds} s`);
    show.expectNothingUncaught();
}

run({ TheFirstOkLetsSoundBegin, EscapeAloneIsSilentUntilAClick, GoesOnInTheBackground });
