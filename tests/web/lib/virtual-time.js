// Runs in the page before its scripts: time stands still until a test advances it, there is no
// sound device, and drawing takes no time, as in a recording.
"use strict";

(() => {
    let nowMs = 0;
    let lastNumber = 0;
    const timers = new Map();
    const rounding = 1e-6; // of sums of times
    const realTimeout = window.setTimeout.bind(window);

    performance.now = () => nowMs;
    window.setTimeout = (action, delayMs = 0, ...rest) => {
        timers.set(++lastNumber, { dueMs: nowMs + Math.max(delayMs, 0), action, rest });
        return lastNumber;
    };
    window.clearTimeout = (number) => timers.delete(number);
    window.setInterval = () => {
        throw new Error("no interval is expected");
    };
    delete window.AudioContext;

    const gl = WebGL2RenderingContext.prototype;
    gl.clientWaitSync = () => gl.ALREADY_SIGNALED;

    function earliest() {
        let first = null;
        for (const [number, timer] of timers) {
            if (first === null || timer.dueMs < timers.get(first).dueMs) {
                first = number;
            }
        }
        return first;
    }

    const turnOfThePage = () => new Promise((resolve) => realTimeout(resolve, 0));

    /** What the page has posted to itself runs before time goes on. */
    async function turnsOfThePage() {
        await turnOfThePage();
        await turnOfThePage();
        await turnOfThePage();
    }

    window.virtualTime = {
        /** Runs what is due in the next @p ms, each at its time. */
        async advance(ms) {
            await turnsOfThePage();
            const endMs = nowMs + ms;
            for (;;) {
                const number = earliest();
                if (number === null || timers.get(number).dueMs > endMs + rounding) {
                    break;
                }
                const { dueMs, action, rest } = timers.get(number);
                timers.delete(number);
                nowMs = Math.max(nowMs, dueMs);
                action(...rest);
                await turnsOfThePage();
            }
            nowMs = endMs;
        },
        /** Lets @p ms pass in which nothing is due: all timers wait so much longer. */
        skip(ms) {
            nowMs += ms;
            timers.forEach((timer) => (timer.dueMs += ms));
        },
    };
})();
