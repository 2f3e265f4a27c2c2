// The boxes at the start, answered in each way there is.
"use strict";

const assert = require("node:assert/strict");

const { run } = require("./lib/cases");
const { boxes, open, title } = require("./lib/visit");

const fullScreenComment = "OK, fullskjermspowwah!";
const windowComment = "Oh, oh, oh, getting all high and mighty, WINDOW MODE, yeah whatever.";

/** The caption of the button that has the focus. */
function focused(show) {
    return show.page.evaluate(() => document.activeElement.textContent);
}

async function TextsAndButtonsAreTheShows() {
    const show = await open();
    assert.deepEqual(await show.box(), boxes[0]);
    await show.click("OK");
    assert.deepEqual(await show.box(), boxes[1]);
    await show.click("No");
    assert.deepEqual(await show.box(), { title, text: windowComment, buttons: ["OK"] });
    await show.click("OK");
    await show.playing();
    show.expectNothingUncaught();
}

async function ReturnPressesTheDefault() {
    const show = await open();
    await show.press("Enter");
    await show.press("Enter");
    assert.equal((await show.box()).text, fullScreenComment);
}

async function EscapePressesTheCancelButton() {
    const show = await open();
    await show.press("Escape");
    await show.press("Escape");
    assert.equal((await show.box()).text, windowComment);
    await show.press("Escape");
    await show.playing();
}

async function TabReachesEachButton() {
    const show = await open();
    await show.click("OK");
    await show.box();
    assert.equal(await focused(show), "Yes");
    const reached = new Set();
    for (let i = 0; i < 3; ++i) {
        reached.add(await focused(show));
        await show.page.keyboard.press("Tab");
    }
    assert(reached.has("Yes") && reached.has("No"));
    while ((await focused(show)) !== "No") {
        await show.page.keyboard.press("Tab");
    }
    await show.press("Space");
    assert.equal((await show.box()).text, windowComment);
}

async function FingersAnswer() {
    const show = await open({
        viewport: { width: 360, height: 740, hasTouch: true, isMobile: true },
    });
    for (const caption of ["OK", "No", "OK"]) {
        const { text } = await show.box();
        const button = await show.page.$(`dialog[open] ::-p-xpath(.//button[.="${caption}"])`);
        await button.tap();
        await show.boxIsGone(text);
    }
    await show.playing();
}

async function FocusComesBack() {
    const show = await open({
        prepare: () =>
            document.addEventListener("DOMContentLoaded", () => {
                const link = document.body.appendChild(document.createElement("button"));
                link.textContent = "before";
                link.focus();
            }),
    });
    await show.box();
    assert.equal(await focused(show), "OK");
    await show.answerBoxes(false);
    assert.equal(await focused(show), "before");
}

run({
    TextsAndButtonsAreTheShows,
    ReturnPressesTheDefault,
    EscapePressesTheCancelButton,
    TabReachesEachButton,
    FingersAnswer,
    FocusComesBack,
});
