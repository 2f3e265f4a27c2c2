// Whole shows in Chromium: in the page and full screen, left and to the end, with and without sound.
"use strict";

const assert = require("node:assert/strict");
const { execFileSync } = require("node:child_process");
const path = require("node:path");

const { run, scratchFolder } = require("./lib/cases");
const { open } = require("./lib/visit");

/** What the native program prints, a character a byte; each 1 is a drawing. */
function nativeOutput() {
    const recorder = path.join(process.env.PROGRAMS, "skovra-record");
    const wanted = ["--size", "64x48", "--trace", "--wav", path.join(scratchFolder(), "sound.wav")];
    return execFileSync(recorder, wanted, { stdio: ["ignore", "pipe", "ignore"] }).toString("latin1");
}

const frames = /1+0*$/;

async function playToItsEnd(show) {
    await show.playing();
    await show.ended();
    show.expectNothingUncaught();
    return show.output.join("\n");
}

async function PlaysToItsEndAndAgain() {
    const show = await open();
    await show.answerBoxes(false);
    const printed = await playToItsEnd(show);
    assert(printed.match(frames)[0].length > 500, "frames: " + printed.match(frames)[0].length);
    assert.equal(printed.replace(frames, ""), nativeOutput().replace(frames, ""));
    assert(show.requests.every((url) => url.startsWith(new URL(show.page.url()).origin)));

    show.output.length = 0;
    await show.page.click("#again");
    await show.answerBoxes(false);
    await show.playing();
    await show.page.keyboard.press("Escape");
    await show.ended();
    show.expectNothingUncaught();
}

async function EscapeEndsIt() {
    const show = await open();
    await show.answerBoxes(false);
    await show.playing();
    const begin = Date.now();
    await show.page.keyboard.press("Escape");
    await show.ended();
    assert(Date.now() - begin < 20000);
    show.expectNothingUncaught();
}

async function TheEndOffersWhatIsBesideIt() {
    const list = [
        { name: "skovra.zip", file: "downloads/skovra.zip" },
        { name: "no address", file: "javascript:alert(1)" },
    ];
    const show = await open({
        faults: { "downloads.json": { bytes: Buffer.from(JSON.stringify(list)) } },
    });
    await show.answerBoxes(false);
    await show.playing();
    await show.page.keyboard.press("Escape");
    await show.ended();
    await show.page.waitForSelector("#downloads a", { visible: true });
    const links = await show.page.$$eval("#downloads a", (found) =>
        found.map((link) => [link.textContent, new URL(link.href).pathname]),
    );
    assert.deepEqual(links, [["skovra.zip", "/downloads/skovra.zip"]]);
}

const isFullScreen = () => document.fullscreenElement !== null;

async function FullScreenIsLeftByTheBrowsersEscape() {
    const show = await open();
    await show.answerBoxes(true);
    await show.page.waitForFunction(isFullScreen, { timeout: 30000 });
    const [canvas, screen] = await show.page.evaluate(() => {
        const { width, height } = document.querySelector("#canvas").getBoundingClientRect();
        return [[width, height], [innerWidth, innerHeight]];
    });
    assert.deepEqual(canvas, screen);
    // Browsers keep Escape in full screen for themselves; a driver's key does not reach them.
    await show.page.evaluate(() => document.exitFullscreen());
    await show.ended();
    show.expectNothingUncaught();
}

async function PlaysInThePageWhereFullScreenIsRefused() {
    const show = await open({
        prepare: () => {
            Element.prototype.requestFullscreen = () => Promise.reject(new TypeError("no"));
        },
    });
    await show.answerBoxes(true);
    await show.playing();
    show.expectNothingUncaught();
}

async function SizesReachTheShow() {
    const show = await open({ viewport: { width: 1400, height: 1100 } });
    await show.answerBoxes(false);
    await show.playing();
    const sizes = () =>
        show.page.evaluate(() => {
            const canvas = document.querySelector("#canvas");
            const { width, height } = canvas.getBoundingClientRect();
            return { css: [width, height], device: [canvas.width, canvas.height] };
        });
    const become = (css, device) =>
        show.page.waitForFunction(
            (wanted) => {
                const canvas = document.querySelector("#canvas");
                const { width, height } = canvas.getBoundingClientRect();
                const is = [width, height, canvas.width, canvas.height];
                return is.every((length, i) => Math.abs(length - wanted[i]) < 1.5);
            },
            { timeout: 30000 },
            [...css, ...device],
        );
    assert.deepEqual(await sizes(), { css: [1024, 768], device: [1024, 768] });
    await show.page.setViewport({ width: 1500, height: 1200, deviceScaleFactor: 2 });
    await become([1024, 768], [2048, 1536]);
    await show.page.setViewport({ width: 360, height: 740 });
    await become([360, 270], [360, 270]);
    show.expectNothingUncaught();
}

/** No audio at all, or audio that the browser never lets run. */
const audio = {
    missing: () => {
        delete window.AudioContext;
    },
    refused: () => {
        window.AudioContext = class {
            constructor() {
                throw new DOMException("no", "NotSupportedError");
            }
        };
    },
    suspended: () => {
        AudioContext.prototype.resume = () => new Promise(() => {});
        Object.defineProperty(AudioContext.prototype, "state", { get: () => "suspended" });
    },
};

async function playSilently(prepare) {
    const show = await open({ prepare });
    await show.answerBoxes(false);
    await playToItsEnd(show);
    assert(show.errors.includes("skovra: no sound device, playing silently"), show.errors.join());
}

const WithoutAudioItPlaysSilently = () => playSilently(audio.missing);
const WithAudioRefusedItPlaysSilently = () => playSilently(audio.refused);
const WithAudioSuspendedItPlaysSilently = () => playSilently(audio.suspended);

run({
    PlaysToItsEndAndAgain,
    EscapeEndsIt,
    TheEndOffersWhatIsBesideIt,
    FullScreenIsLeftByTheBrowsersEscape,
    PlaysInThePageWhereFullScreenIsRefused,
    SizesReachTheShow,
    WithoutAudioItPlaysSilently,
    WithAudioRefusedItPlaysSilently,
    WithAudioSuspendedItPlaysSilently,
});
