// Each thing that may be missing or broken, and the sentence that the viewer gets.
"use strict";

const assert = require("node:assert/strict");
const crypto = require("node:crypto");
const fs = require("node:fs");
const path = require("node:path");

const { run } = require("./lib/cases");
const { openChromium } = require("./lib/browsers");
const { serve } = require("./lib/site");
const { Visit, open, visit, watchAudio } = require("./lib/visit");

/** A sentence, not a code: it begins with a capital letter and ends with a full stop. */
async function expectSentence(show, pattern) {
    const said = await show.message();
    assert.match(said, /^[A-Z].*[.]/s);
    assert.match(said, pattern);
    show.expectNothingUncaught();
}

const garbage = () => ({ bytes: crypto.createHash("sha512").update("noise").digest() });

const without = (prepare, pattern) => async () => {
    const show = await open({ prepare });
    await expectSentence(show, pattern);
};

async function NoJavaScriptIsTold() {
    const browser = await openChromium();
    const site = await serve();
    const page = await browser.newPage();
    await page.setJavaScriptEnabled(false);
    await page.goto(site.address);
    const sentence = await page.waitForSelector("noscript .sentence", { visible: true });
    assert.match(await sentence.evaluate((element) => element.innerText), /JavaScript/);
}

const NoWebAssemblyIsTold = without(() => {
    delete window.WebAssembly;
}, /WebAssembly/);

const NoWebGlIsTold = without(() => {
    const { getContext } = HTMLCanvasElement.prototype;
    HTMLCanvasElement.prototype.getContext = function (kind, ...rest) {
        return kind === "webgl2" ? null : getContext.call(this, kind, ...rest);
    };
}, /WebGL 2/);

/** Until the viewer sees a sentence, of the page or of its script. */
function sentenceIsSeen(show) {
    return show.page.waitForFunction(
        () =>
            ["#message", "#fallback"].some((name) => {
                const element = document.querySelector(name);
                return element !== null && element.checkVisibility() && /^[A-Z].*[.]/s.test(element.innerText);
            }),
        { timeout: 60000, polling: 50 },
    );
}

const faultsOf = (file) => {
    const bytes = fs.readFileSync(path.join(process.env.SITE, file));
    const half = Math.floor(bytes.length / 2);
    return {
        missing: { status: 404 },
        failing: { status: 500 },
        cut: { cut: half },
        short: { bytes: bytes.subarray(0, half) },
        garbage: garbage(),
    };
};

async function expectEachFaultTold(page, files) {
    const browser = await openChromium();
    for (const file of files) {
        for (const [kind, fault] of Object.entries(faultsOf(file))) {
            const site = await serve({ faults: { [path.basename(file)]: fault } });
            const show = await visit(browser, site.address + page);
            await sentenceIsSeen(show).catch(() => assert.fail(`${file} ${kind}: nothing is said`));
            if (!file.endsWith("page.js")) { // which alone could catch what is wrong with it
                assert.deepEqual(show.uncaught, [], `${file} ${kind}`);
            }
            await show.page.close();
        }
    }
}

const EachFaultOfTheCodeIsTold = () =>
    expectEachFaultTold("", ["page.js", "style.css", "skovra.js", "skovra.wasm"]);
const EachFaultOfAResourceIsTold = () =>
    expectEachFaultTold(
        "",
        ["credits.png", "skovr.png", "synchtune.mp3", "texture.png"].map((name) => `resources/${name}`),
    );
const EachFaultOfTheGalleryIsTold = () =>
    expectEachFaultTold("gallery.html", ["exhibits.js", "gallery.js", "gallery.wasm"]);

async function AHostThatStopsAnsweringIsTold() {
    const show = await open({ faults: { "credits.png": { hang: true } } });
    await expectSentence(show, /while/);
}

async function endsBeforeTheBoxes(fault, code) {
    const show = await open({ faults: { "synchtune.mp3": fault } });
    await expectSentence(show, /music/i);
    assert(show.output.join("\n").includes(`FMOD error! (${code}) `), show.output.join("\n"));
}

const MissingMusicIsTold = () => endsBeforeTheBoxes({ status: 404 }, 22);
const MusicThatIsNoneIsTold = () => endsBeforeTheBoxes(garbage(), 24);
const MusicThatMayNotBeReadIsTold = () => endsBeforeTheBoxes({ status: 403 }, 19);

/** The picture's quad stays plain, as natively. */
async function PicturesMissingOrGarbageAreLeftOut() {
    for (const fault of [{ status: 404 }, { status: 403 }, garbage()]) {
        const show = await open({ faults: { "skovr.png": fault, "credits.png": fault } });
        assert.match(await show.message(), /picture/);
        await show.answerBoxes(false);
        await show.playing();
        const warned = show.output.join("\n").includes("WARNING: CFURL");
        assert.equal(warned, fault.status === 404);
        show.expectNothingUncaught();
        await show.page.browser().close();
    }
}

async function WrongTypesDoNotMatter() {
    const show = await open({
        faults: Object.fromEntries(
            ["skovra.wasm", "skovr.png", "credits.png", "texture.png", "synchtune.mp3"].map((name) => [
                name,
                { type: "text/plain" },
            ]),
        ),
    });
    await show.answerBoxes(false);
    await show.playing();
    show.expectNothingUncaught();
}

/** But for styles: a browser takes those of no other type. */
async function StylesOfAWrongTypeAreTold() {
    const show = await open({ faults: { "style.css": { type: "text/plain" } } });
    await expectSentence(show, /missing or damaged/);
}

/** Of a chunk that is as long as all memory. */
async function APictureThatLiesAboutItsLengthIsLeftOut() {
    const picture = fs.readFileSync(path.join(process.env.SITE, "resources", "skovr.png"));
    const head = Buffer.from([0xff, 0xff, 0xff, 0xf4, ...Buffer.from("gAMA")]);
    const bytes = Buffer.concat([picture.subarray(0, 33), head, Buffer.alloc(64)]);
    const show = await open({ faults: { "skovr.png": { bytes } } });
    await show.answerBoxes(false);
    await show.playing();
    assert((await coloursShown(show)) > 1);
    show.expectNothingUncaught();
}

async function AProgramThatFailsEndsTheShow() {
    const show = await open({ prepare: watchAudio });
    await show.answerBoxes(false);
    await show.playing();
    await show.page.evaluate(() => {
        WebGL2RenderingContext.prototype.clear = () => {
            throw new Error("broken");
        };
    });
    await expectSentence(show, /failed/);
    assert.equal(await show.page.$("#end:not([hidden])"), null);
    await show.page.waitForFunction(() => window.context.state === "closed", { timeout: 30000 });
}

async function PlaysFromASubfolder() {
    const show = await open({ folder: "/a/b c/" });
    await show.answerBoxes(false);
    await show.playing();
    assert(show.requests.every((url) => decodeURI(new URL(url).pathname).startsWith("/a/b c/")));
    show.expectNothingUncaught();
}

async function RefusedStorageDoesNotMatter() {
    const show = await open({
        prepare: () => {
            for (const name of ["localStorage", "sessionStorage", "indexedDB", "caches"]) {
                Object.defineProperty(window, name, {
                    get: () => {
                        throw new DOMException("no", "SecurityError");
                    },
                });
            }
        },
    });
    await show.answerBoxes(false);
    await show.playing();
    show.expectNothingUncaught();
    assert.deepEqual(await show.page.browser().defaultBrowserContext().cookies(), []);
}

async function ThePolicyForbidsWhatThePageDoesNotNeed() {
    const show = await open();
    await show.box();
    const other = await serve();
    const allowed = await show.page.evaluate(async (address) => {
        const script = document.createElement("script");
        script.textContent = "window.injected = true;";
        document.head.append(script);
        setTimeout("window.evaluated = true;");
        const answer = await fetch(address, { mode: "no-cors" }).catch(() => null);
        await new Promise((later) => setTimeout(later, 100));
        return { injected: window.injected, evaluated: window.evaluated, answer };
    }, other.address);
    assert.deepEqual(allowed, { answer: null });
    assert.deepEqual(other.requests, []);
}

/** Loses the context, and gets it back if @p restored. */
function loseContext(show, restored) {
    return show.page.evaluate((again) => {
        const gl = document.querySelector("#canvas").getContext("webgl2");
        const lost = gl.getExtension("WEBGL_lose_context");
        lost.loseContext();
        if (again) {
            setTimeout(() => lost.restoreContext(), 500);
        }
    }, restored);
}

/** How many different colours the canvas shows. */
async function coloursShown(show) {
    const canvas = await show.page.$("#canvas");
    const picture = Buffer.from(await canvas.screenshot({ encoding: "binary" }));
    return show.page.evaluate(async (bytes) => {
        const image = await createImageBitmap(new Blob([Uint8Array.from(atob(bytes), (c) => c.charCodeAt(0))]));
        const copy = new OffscreenCanvas(image.width, image.height).getContext("2d");
        copy.drawImage(image, 0, 0);
        return new Set(new Uint32Array(copy.getImageData(0, 0, image.width, image.height).data.buffer)).size;
    }, picture.toString("base64"));
}

async function expectPictureAgain(show) {
    const end = Date.now() + 30000;
    while ((await coloursShown(show)) <= 1000) {
        assert(Date.now() < end, "no picture");
    }
    show.expectNothingUncaught();
    await show.page.keyboard.press("Escape");
    await show.ended();
}

async function AContextThatComesBackShowsAgain() {
    const show = await open();
    await show.answerBoxes(false);
    await show.playing();
    await loseContext(show, true);
    await expectPictureAgain(show);
}

async function AContextLostDuringABoxShowsAgain() {
    const show = await open();
    await show.click("OK");
    await loseContext(show, true);
    await show.click("No");
    await show.click("OK");
    await expectPictureAgain(show);
}

async function AContextLostBeforeTheBoxesShowsAgain() {
    const browser = await openChromium();
    const site = await serve();
    const page = await browser.newPage();
    await page.emulateMediaFeatures([{ name: "prefers-reduced-motion", value: "reduce" }]);
    const show = new Visit(page);
    await page.setViewport({ width: 1280, height: 1000 });
    await page.goto(site.address);
    await page.waitForSelector("#motion:not([hidden]) button", { visible: true, timeout: 30000 });
    await loseContext(show, true);
    await page.click("#motion button");
    await show.answerBoxes(false);
    await expectPictureAgain(show);
}

async function AContextThatStaysLostIsTold() {
    const show = await open();
    await show.answerBoxes(false);
    await show.playing();
    await loseContext(show, false);
    await expectSentence(show, /graphics/i);
}

run({
    NoJavaScriptIsTold,
    NoWebAssemblyIsTold,
    NoWebGlIsTold,
    EachFaultOfTheCodeIsTold,
    EachFaultOfAResourceIsTold,
    EachFaultOfTheGalleryIsTold,
    AHostThatStopsAnsweringIsTold,
    MissingMusicIsTold,
    MusicThatIsNoneIsTold,
    MusicThatMayNotBeReadIsTold,
    PicturesMissingOrGarbageAreLeftOut,
    WrongTypesDoNotMatter,
    StylesOfAWrongTypeAreTold,
    APictureThatLiesAboutItsLengthIsLeftOut,
    AProgramThatFailsEndsTheShow,
    PlaysFromASubfolder,
    RefusedStorageDoesNotMatter,
    ThePolicyForbidsWhatThePageDoesNotNeed,
    AContextThatComesBackShowsAgain,
    AContextLostDuringABoxShowsAgain,
    AContextLostBeforeTheBoxesShowsAgain,
    AContextThatStaysLostIsTold,
});
