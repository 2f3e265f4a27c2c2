// A visitor's view of the page: boxes, what is said, what is shown.
"use strict";

const assert = require("node:assert/strict");

const { openChromium } = require("./browsers");
const { serve } = require("./site");

/** The boxes of the show: title, text, captions of their buttons. */
const title = '"QVZ 02 - Skovra"';
const boxes = [
    { title, text: "Copyright © 2005 Halvmork.", buttons: ["OK"] },
    { title, text: "Skal du kjøre Skovra i fullskjerm?", buttons: ["No", "Yes"] },
];

class Visit {
    constructor(page) {
        this.page = page;
        this.output = []; // lines, a character a byte
        this.errors = [];
        this.uncaught = [];
        this.requests = [];
        page.on("console", (message) => this.note(message));
        page.on("pageerror", (problem) => this.uncaught.push(String(problem)));
        page.on("request", (request) => this.requests.push(request.url()));
    }

    note(message) {
        const lines = message.type() === "log" ? this.output : this.errors;
        lines.push(message.text());
    }

    /** The open box, once there is one. */
    async box() {
        await this.page.waitForSelector("dialog[role=alertdialog][open]", { timeout: 60000 });
        return this.page.$eval("dialog[role=alertdialog][open]", (dialog) => {
            const text = (attribute) =>
                document.getElementById(dialog.getAttribute(attribute)).textContent;
            return {
                title: text("aria-labelledby"),
                text: text("aria-describedby"),
                buttons: [...dialog.querySelectorAll("button")].map((button) => button.textContent),
            };
        });
    }

    async boxIsGone(text) {
        await this.page.waitForFunction(
            (former) => {
                const dialog = document.querySelector("dialog[role=alertdialog][open]");
                return dialog === null || !dialog.textContent.includes(former);
            },
            { timeout: 60000, polling: 20 },
            text,
        );
    }

    /** Clicks the button of that caption in the open box. */
    async click(caption) {
        const { text } = await this.box();
        const button = await this.page.$(`dialog[open] ::-p-xpath(.//button[.="${caption}"])`);
        await button.click();
        await this.boxIsGone(text);
    }

    async press(key) {
        const { text } = await this.box();
        await this.page.keyboard.press(key);
        await this.boxIsGone(text);
    }

    /** Answers all boxes by clicks. */
    async answerBoxes(fullScreen) {
        await this.click("OK");
        await this.click(fullScreen ? "Yes" : "No");
        await this.click("OK");
    }

    /** The sentence that tells the viewer what is wrong, once there is one. */
    async message() {
        await this.page.waitForFunction(
            () => {
                const message = document.querySelector("#message");
                return message !== null && !message.hidden && message.textContent.trim() !== "";
            },
            { timeout: 60000, polling: 50 },
        );
        return this.page.$eval("#message", (message) => message.innerText.trim());
    }

    /** Until the page says what it was. */
    async ended(limitMs = 90000) {
        await this.page.waitForSelector("#end:not([hidden])", { visible: true, timeout: limitMs });
    }

    /** Until @p text has been printed. */
    async printed(text, limitMs = 60000) {
        const end = Date.now() + limitMs;
        while (!this.output.join("\n").includes(text)) {
            assert(Date.now() < end, `never printed: ${text}; but ${this.output.join("\n")}`);
            await new Promise((later) => setTimeout(later, 20));
        }
    }

    /** Until the first picture is drawn: what is printed then ends a line, later frames do not. */
    async playing() {
        await this.printed("Loading Textures...");
        await this.page.evaluate(
            () => new Promise((drawn) => requestAnimationFrame(() => requestAnimationFrame(drawn))),
        );
    }

    expectNothingUncaught() {
        assert.deepEqual(this.uncaught, []);
    }
}

/** Opens @p address in a new page of @p browser. @p prepare: runs in the page before its scripts. */
async function visit(browser, address, options = {}) {
    const page = await browser.newPage();
    if (options.viewport !== null) {
        await page.setViewport(options.viewport || { width: 1280, height: 1000 });
    }
    if (options.prepare) {
        await page.evaluateOnNewDocument(options.prepare);
    }
    const seen = new Visit(page);
    await page.goto(address, { waitUntil: "domcontentloaded" });
    return seen;
}

/** In the page, before its scripts: notes its audio context, and how many chunks it was given. */
function watchAudio() {
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

/**
 * Opens @p options.page ("", the show) of a site of its own in Chromium. Options besides: those of
 * serve, of visit, and, as @p options.browser, of openChromium.
 */
async function open(options = {}) {
    const browser = await openChromium(options.browser);
    const site = await serve(options);
    return visit(browser, site.address + (options.page || ""), options);
}

module.exports = { Visit, boxes, open, title, visit, watchAudio };
