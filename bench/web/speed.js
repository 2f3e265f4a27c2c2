// speed.js Speed: how fast the page starts and draws in Chromium, a line of figures per run.
"use strict";

const { run } = require("../../tests/web/lib/cases");
const { openChromium } = require("../../tests/web/lib/browsers");
const { serve } = require("../../tests/web/lib/site");
const { visit } = require("../../tests/web/lib/visit");

const playMs = 10000;

/** In the page, before its scripts: notes when boxes open, and what drawing costs the page. */
function watch() {
    const seen = { boxMs: 0, okMs: 0, pictureMs: 0, ticks: [], drawings: 0 };
    window.seen = seen;
    let taskDraws = false;

    const showModal = HTMLDialogElement.prototype.showModal;
    HTMLDialogElement.prototype.showModal = function () {
        showModal.call(this);
        seen.boxMs = seen.boxMs || performance.now();
    };
    document.addEventListener("click", () => (seen.okMs = performance.now()), true);

    const gl = WebGL2RenderingContext.prototype;
    const { clear } = gl;
    gl.clear = function (...rest) {
        clear.apply(this, rest);
        taskDraws = true;
        ++seen.drawings;
        if (seen.pictureMs === 0) {
            seen.pictureMs = -1;
            const drawn = () => {
                const fence = this.fenceSync(this.SYNC_GPU_COMMANDS_COMPLETE, 0);
                this.flush();
                const poll = () => {
                    if (this.getSyncParameter(fence, this.SYNC_STATUS) === this.SIGNALED) {
                        seen.pictureMs = performance.now();
                    } else {
                        setTimeout(poll, 1);
                    }
                };
                poll();
            };
            setTimeout(drawn, 0);
        }
    };

    // Each task of the page that draws is a tick.
    const timed = (action) =>
        function (...rest) {
            const begin = performance.now();
            taskDraws = false;
            action.apply(this, rest);
            if (taskDraws) {
                seen.ticks.push(performance.now() - begin);
            }
        };
    const { setTimeout: realTimeout } = window;
    window.setTimeout = (action, ...rest) => realTimeout(timed(action), ...rest);
    const onmessage = Object.getOwnPropertyDescriptor(MessagePort.prototype, "onmessage");
    Object.defineProperty(MessagePort.prototype, "onmessage", {
        ...onmessage,
        set(action) {
            onmessage.set.call(this, timed(action));
        },
    });
}

function percentile(values, share) {
    const sorted = [...values].sort((one, other) => one - other);
    return sorted[Math.min(sorted.length - 1, Math.floor(share * sorted.length))];
}

async function Speed() {
    const browser = await openChromium({ ignoreDefaultArgs: ["--mute-audio"] });
    const site = await serve();
    const show = await visit(browser, site.address, { prepare: watch });
    await show.answerBoxes(false);
    await show.page.waitForFunction(() => window.seen.pictureMs > 0, { timeout: 60000 });
    await new Promise((settled) => setTimeout(settled, 2000));
    const before = await show.page.evaluate(() => {
        window.seen.ticks.length = 0;
        return [window.seen.drawings, performance.now()];
    });
    await new Promise((played) => setTimeout(played, playMs));
    const { seen, drawings, nowMs } = await show.page.evaluate(() => ({
        seen: window.seen,
        drawings: window.seen.drawings,
        nowMs: performance.now(),
    }));
    const ticksPerSecond = ((drawings - before[0]) / (nowMs - before[1])) * 1000;
    const figures = [
        `first box ${seen.boxMs.toFixed(0)} ms after navigation`,
        `first picture ${(seen.pictureMs - seen.okMs).toFixed(0)} ms after the last OK`,
        `${ticksPerSecond.toFixed(1)} ticks/s`,
        `a tick costs ${percentile(seen.ticks, 0.5).toFixed(2)} ms (median),` +
            ` ${percentile(seen.ticks, 0.99).toFixed(2)} (p99)`,
        await browser.version(),
    ];
    console.log(figures.join("; "));
    show.expectNothingUncaught();
}

run({ Speed });
