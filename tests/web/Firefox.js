// One whole show and the gallery in Firefox.
"use strict";

const assert = require("node:assert/strict");

const { run } = require("./lib/cases");
const { openFirefox } = require("./lib/browsers");
const { serve } = require("./lib/site");
const { boxes, visit } = require("./lib/visit");

async function picture(visited) {
    const canvas = await visited.page.$("#canvas");
    return canvas.screenshot({ encoding: "base64" });
}

/** What is shown once it is not among @p seen. */
async function anotherPicture(visited, seen) {
    for (let i = 0; i < 100; ++i) {
        const now = await picture(visited);
        if (!seen.has(now) && now === (await picture(visited))) {
            return now;
        }
    }
    throw new Error("nothing changes");
}

async function PlaysToItsEnd() {
    const browser = await openFirefox();
    const site = await serve();
    const show = await visit(browser, site.address, { viewport: null });
    assert.deepEqual(await show.box(), boxes[0]);
    await show.answerBoxes(false);
    await show.playing();
    const moments = [await picture(show), await picture(show)];
    assert.notEqual(moments[0], moments[1]);
    await show.ended();
    show.expectNothingUncaught();
}

async function ShowsTheGallery() {
    const browser = await openFirefox();
    const site = await serve();
    const gallery = await visit(browser, site.address + "gallery.html", { viewport: null });
    await gallery.page.waitForSelector("#controls:not([hidden])");
    const pictures = new Set();
    for (const button of await gallery.page.$$("#exhibits button")) {
        await button.click();
        pictures.add(await anotherPicture(gallery, pictures));
    }
    assert.equal(pictures.size, 8);
    gallery.expectNothingUncaught();
}

run({ PlaysToItsEnd, ShowsTheGallery });
