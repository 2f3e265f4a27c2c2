// The page for those who do not see it, or see it in another size; axe knows the rules.
"use strict";

const assert = require("node:assert/strict");
const fs = require("node:fs");

const { run } = require("./lib/cases");
const { openChromium } = require("./lib/browsers");
const { serve } = require("./lib/site");
const { open } = require("./lib/visit");

const axe = fs.readFileSync(require.resolve("axe-core/axe.min.js"), "utf8");

async function openForAxe(options) {
    const show = await open(options);
    await show.page.setBypassCSP(true); // for axe only
    return show;
}

async function expectNoViolations(show, where) {
    await show.page.evaluate(axe);
    const { violations } = await show.page.evaluate(() => window.axe.run());
    const found = violations.map(({ id, nodes }) => `${id}: ${nodes.map((node) => node.html)}`);
    assert.deepEqual(found, [], where);
}

/** No part of the page is wider than the window. */
async function expectNoSidewaysScrolling(show, where) {
    const [wide, window] = await show.page.evaluate(() => [
        document.documentElement.scrollWidth,
        document.documentElement.clientWidth,
    ]);
    assert(wide <= window, `${where}: ${wide} in ${window}`);
}

async function walkThroughTheShow(show, check) {
    await show.box();
    await check(show, "first box");
    await show.click("OK");
    await show.box();
    await check(show, "question");
    await show.click("No");
    await show.click("OK");
    await show.playing();
    await check(show, "show");
    await show.page.keyboard.press("Escape");
    await show.ended();
    await check(show, "end");
}

async function EachStateOfTheShowKeepsTheRules() {
    const show = await openForAxe();
    assert.equal(await show.page.$eval("#canvas", (canvas) => canvas.getAttribute("role")), "img");
    await walkThroughTheShow(show, expectNoViolations);
}

async function AMessageKeepsTheRules() {
    const show = await openForAxe({ faults: { "synchtune.mp3": { status: 404 } } });
    await show.message();
    assert.equal(await show.page.$eval("#message", (message) => message.getAttribute("role")), "alert");
    await expectNoViolations(show, "message");
}

async function TheGalleryKeepsTheRules() {
    const show = await openForAxe({ page: "gallery.html" });
    await show.page.waitForSelector("#controls:not([hidden])");
    await expectNoViolations(show, "gallery");
}

async function FitsNarrowPhones() {
    const show = await openForAxe({ viewport: { width: 360, height: 740 } });
    await walkThroughTheShow(show, expectNoSidewaysScrolling);
    await show.page.goto(show.page.url() + "gallery.html");
    await show.page.waitForSelector("#controls:not([hidden])");
    await expectNoSidewaysScrolling(show, "gallery");
}

/** As in a window of 1280 by 1024 at 200 %. */
async function FitsAtTwiceTheSize() {
    const show = await openForAxe({ viewport: { width: 640, height: 512, deviceScaleFactor: 2 } });
    await walkThroughTheShow(show, expectNoSidewaysScrolling);
}

async function TheFooterNamesTheVersions() {
    const show = await openForAxe();
    const footer = await show.page.$eval("#versions", (element) => element.textContent);
    assert.match(footer, /^Skovra \d+\.\d+\.\d+, built with Emscripten \d+\.\d+\.\d+ and Clang \d/);
}

async function FocusIsSeen() {
    const show = await openForAxe();
    await show.box();
    await show.page.keyboard.press("Tab");
    await show.page.keyboard.press("Tab");
    const outline = await show.page.evaluate(() => {
        const { outlineStyle, outlineWidth } = getComputedStyle(document.activeElement);
        return [document.activeElement.tagName, outlineStyle, outlineWidth];
    });
    assert.equal(outline[0], "BUTTON");
    assert.notEqual(outline[1], "none");
    assert(parseFloat(outline[2]) >= 2);
}

async function ReducedMotionGetsANoteFirst() {
    const browser = await openChromium();
    const site = await serve();
    const page = await browser.newPage();
    await page.emulateMediaFeatures([{ name: "prefers-reduced-motion", value: "reduce" }]);
    await page.goto(site.address);
    await page.waitForSelector("#motion:not([hidden]) button", { visible: true, timeout: 30000 });
    assert.match(await page.$eval("#motion", (note) => note.textContent), /mov|flash|motion/i);
    assert.equal(await page.$("dialog[role=alertdialog][open]"), null);
    await page.click("#motion button");
    await page.waitForSelector("dialog[role=alertdialog][open]", { timeout: 30000 });
}

run({
    EachStateOfTheShowKeepsTheRules,
    AMessageKeepsTheRules,
    TheGalleryKeepsTheRules,
    FitsNarrowPhones,
    FitsAtTwiceTheSize,
    TheFooterNamesTheVersions,
    FocusIsSeen,
    ReducedMotionGetsANoteFirst,
});
