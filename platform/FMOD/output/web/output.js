// The page's audio context, for PageOutput.cpp.
"use strict";

mergeInto(LibraryManager["library"], {
    $SkovraAudio: {
        periodMs: 50,
        gestures: ["pointerup", "click", "keydown", "touchend"],

        context: null,
        options: null,
        starting: false, // the viewer has let it play
        scheduled: [], // sources that have not ended, each with its time
        timer: 0,

        open: function () {
            if (SkovraAudio.context !== null) {
                return;
            }
            try {
                const context = new AudioContext(SkovraAudio.options);
                context.onstatechange = SkovraAudio.turn;
                SkovraAudio.context = context;
            } catch (error) {
                // The browser has no audio context, or no device for one.
            }
        },

        // Escape is no gesture to browsers.
        resume: function (event) {
            if (event.key === "Escape") {
                return;
            }
            SkovraAudio.open();
            const context = SkovraAudio.context;
            if (context !== null && context.state !== "running" && context.state !== "closed") {
                SkovraAudio.starting = true;
                context.resume().catch(function () {
                    SkovraAudio.starting = false;
                });
            }
        },

        // Timers of a page in the background are slow; the ends of sources are not.
        turn: function () {
            const isOver = Module["isOver"];
            if (ABORT || (isOver && isOver())) {
                SkovraAudio.close(); // the program has ended, or failed
                return;
            }
            clearTimeout(SkovraAudio.timer);
            SkovraAudio.timer = setTimeout(SkovraAudio.turn, SkovraAudio.periodMs);
            _SkovraAudioTurn();
        },

        forget: function (entry) {
            entry.source.onended = null;
            entry.source.disconnect();
            SkovraAudio.scheduled = SkovraAudio.scheduled.filter(function (other) {
                return other !== entry;
            });
        },

        stop: function (time) {
            SkovraAudio.scheduled.forEach(function (entry) {
                if (entry.time >= time) {
                    entry.source.stop();
                    SkovraAudio.forget(entry);
                }
            });
        },

        drop: function () {
            SkovraAudio.scheduled = [];
            SkovraAudio.context = null;
            SkovraAudio.starting = false;
        },

        close: function () {
            clearTimeout(SkovraAudio.timer);
            SkovraAudio.gestures.forEach(function (name) {
                removeEventListener(name, SkovraAudio.resume, true);
            });
            const context = SkovraAudio.context;
            if (context !== null) {
                SkovraAudio.stop(0);
                context.onstatechange = null;
                if (context.state !== "closed") {
                    context.close();
                }
                SkovraAudio.drop();
            }
        },
    },

    SkovraAudioOpen__deps: ["$SkovraAudio"],
    SkovraAudioOpen: function (rateHz, latencySeconds) {
        if (SkovraAudio.options === null) {
            SkovraAudio.options = { sampleRate: rateHz, latencyHint: latencySeconds };
            SkovraAudio.gestures.forEach(function (name) {
                addEventListener(name, SkovraAudio.resume, true);
            });
            SkovraAudio.timer = setTimeout(SkovraAudio.turn, 0);
        }
        SkovraAudio.open();
    },

    SkovraAudioRead__deps: ["$SkovraAudio"],
    SkovraAudioRead: function (report) {
        const finite = function (value) {
            return Number.isFinite(value) ? value : 0;
        };
        let context = SkovraAudio.context;
        if (context !== null && context.state === "closed") {
            SkovraAudio.drop();
            context = null;
        }
        let state = 0;
        let rendered = 0;
        let stamp = {};
        let latency = 0;
        if (context !== null) {
            const running = context.state === "running";
            SkovraAudio.starting = SkovraAudio.starting && !running;
            state = running ? 3 : SkovraAudio.starting ? 2 : 1;
            rendered = context.currentTime;
            stamp = context.getOutputTimestamp ? context.getOutputTimestamp() : {};
            latency = finite(context.outputLatency) || finite(context.baseLatency);
        }
        const to = report >> 3;
        HEAPF64[to] = state;
        HEAPF64[to + 1] = performance.now();
        HEAPF64[to + 2] = rendered;
        HEAPF64[to + 3] = finite(stamp.contextTime);
        HEAPF64[to + 4] = finite(stamp.performanceTime);
        HEAPF64[to + 5] = latency;
    },

    SkovraAudioNow: function () {
        return performance.now();
    },

    SkovraAudioPlay__deps: ["$SkovraAudio"],
    SkovraAudioPlay: function (frames, count, time) {
        const context = SkovraAudio.context;
        if (context === null) {
            return;
        }
        const buffer = context.createBuffer(2, count, SkovraAudio.options.sampleRate);
        const left = buffer.getChannelData(0);
        const right = buffer.getChannelData(1);
        let from = frames >> 2;
        for (let i = 0; i < count; i++) {
            left[i] = HEAPF32[from++];
            right[i] = HEAPF32[from++];
        }
        const source = context.createBufferSource();
        source.buffer = buffer;
        source.connect(context.destination);
        const entry = { source: source, time: time };
        source.onended = function () {
            SkovraAudio.forget(entry);
            SkovraAudio.turn();
        };
        source.start(time);
        SkovraAudio.scheduled.push(entry);
    },

    SkovraAudioStop__deps: ["$SkovraAudio"],
    SkovraAudioStop: function (time) {
        SkovraAudio.stop(time);
    },

    SkovraAudioClose__deps: ["$SkovraAudio"],
    SkovraAudioClose: function () {
        SkovraAudio.close();
        SkovraAudio.options = null;
    },
});
