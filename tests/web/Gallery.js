// The gallery: eight exhibits, by key, click and touch.
"use strict";

const assert = require("node:assert/strict");
const crypto = require("node:crypto");

const { run } = require("./lib/cases");
const { open } = require("./lib/visit");

async function openGallery(options = {}) {
    const gallery = await open({ ...options, page: "gallery.html" });
    await gallery.page.waitForSelector("#controls:not([hidden])");
    return gallery;
}

const pause = (ms) => new Promise((later) => setTimeout(later, ms));

/** What the canvas shows, once it shows the same twice. */
async function shown(gallery) {
    const canvas = await gallery.page.$("#canvas");
    let last = null;
    for (;;) {
        await pause(150);
        const picture = await canvas.screenshot({ encoding: "binary" });
        const now = crypto.createHash("sha1").update(picture).digest("hex");
        if (now === last) {
            return now;
        }
        last = now;
    }
}

/** What is shown after @p act, which changes it. */
async function shownAfter(gallery, act) {
    const before = await shown(gallery);
    await act();
    for (let i = 0; i < 50; ++i) {
        const after = await shown(gallery);
        if (after !== before) {
            return after;
        }
    }
    throw new Error("nothing changes");
}

/** The buttons that choose an exhibit, in their order. */
const exhibits = (gallery) => gallery.page.$$("#exhibits button");

async function EachKeyShowsItsOwnExhibit() {
    const gallery = await openGallery();
    await gallery.page.focus("#canvas");
    const seen = new Set([await shown(gallery)]);
    for (const key of "2345678") {
        seen.add(await shownAfter(gallery, () => gallery.page.keyboard.press(key)));
    }
    assert.equal(seen.size, 8);
    gallery.expectNothingUncaught();
}

async function EachButtonShowsItsOwnExhibit() {
    const gallery = await openGallery();
    const buttons = await exhibits(gallery);
    assert.equal(buttons.length, 8);
    const seen = new Set([await shown(gallery)]);
    for (const button of buttons.slice(1)) {
        seen.add(await shownAfter(gallery, () => button.click()));
        assert.equal(await button.evaluate((element) => element.getAttribute("aria-pressed")), "true");
    }
    assert.equal(seen.size, 8);
}

async function FingersChooseAndTurn() {
    const gallery = await openGallery({
        viewport: { width: 360, height: 740, hasTouch: true, isMobile: true },
    });
    const buttons = await exhibits(gallery);
    await shownAfter(gallery, () => buttons[1].tap());
    await shownAfter(gallery, async () => {
        const { x, y, width, height } = await (await gallery.page.$("#canvas")).boundingBox();
        const finger = await gallery.page.touchscreen.touchStart(x + width / 2, y + height / 2);
        await finger.move(x + width / 2 + 40, y + height / 2);
        await finger.end();
    });
}

async function ArrowsTurnThereAndBack() {
    const gallery = await openGallery();
    await gallery.page.focus("#canvas");
    const first = await shown(gallery);
    await shownAfter(gallery, () => gallery.page.keyboard.press("ArrowLeft"));
    assert.equal(await shownAfter(gallery, () => gallery.page.keyboard.press("ArrowRight")), first);
}

async function AnotherPressShowsMoreElectrons() {
    const gallery = await openGallery();
    await gallery.page.focus("#canvas");
    const one = await shownAfter(gallery, () => gallery.page.keyboard.press("3"));
    assert.notEqual(await shownAfter(gallery, () => gallery.page.keyboard.press("3")), one);
}

async function EachExhibitTakesFewDrawCalls() {
    const gallery = await openGallery({
        prepare: () => {
            window.most = 0;
            let calls = 0;
            const { clear, drawArrays } = WebGL2RenderingContext.prototype;
            WebGL2RenderingContext.prototype.clear = function (...rest) {
                calls = 0;
                clear.apply(this, rest);
            };
            WebGL2RenderingContext.prototype.drawArrays = function (...rest) {
                window.most = Math.max(window.most, ++calls);
                drawArrays.apply(this, rest);
            };
        },
    });
    for (const button of (await exhibits(gallery)).slice(1)) {
        await shownAfter(gallery, () => button.click());
    }
    const most = await gallery.page.evaluate(() => window.most);
    assert(most >= 1 && most <= 5, `${most} draw calls`);
}

async function EscapeLeaves() {
    const gallery = await openGallery();
    await gallery.page.focus("#canvas");
    await gallery.page.keyboard.press("Escape");
    await gallery.ended();
    gallery.expectNothingUncaught();
}

run({
    EachKeyShowsItsOwnExhibit,
    EachButtonShowsItsOwnExhibit,
    FingersChooseAndTurn,
    ArrowsTurnThereAndBack,
    AnotherPressShowsMoreElectrons,
    EachExhibitTakesFewDrawCalls,
    EscapeLeaves,
});
