// What measure.mjs calls in the measured page.
"use strict";

const bench = {
    program: null,

    // Loads the program, with the music beside it.
    async load() {
        const music = new Uint8Array(await (await fetch("music.mp3")).arrayBuffer());
        bench.program = await BenchProgram({
            preRun: [(module) => module.FS.writeFile("/music.mp3", music)],
        });
    },

    // Plays for so many seconds and asks about every millisecond, or as often as timers come, what
    // is heard: pairs of the time and the position. Every two seconds the thread is busy for
    // stallMs, and firstStallMs after the beginning, as for the first picture of a show.
    async play(seconds, stallMs, firstStallMs) {
        const answers = [];
        const busy = (ms) => {
            const end = performance.now() + ms;
            while (performance.now() < end) { /* as drawing would be */ }
        };
        const begin = performance.now();
        bench.program._BenchPlay();
        busy(firstStallMs);
        let stalls = 1;
        for (let now = begin; now < begin + seconds * 1000; now = performance.now()) {
            const position = bench.program._BenchPositionMs();
            answers.push([(now + performance.now()) / 2, position]);
            if (stallMs > 0 && now > begin + stalls * 2000) {
                busy(stallMs);
                stalls++;
            }
            await new Promise((resolve) => setTimeout(resolve, 1));
        }
        return answers;
    },
};
