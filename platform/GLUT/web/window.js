// The window in the page, as PageWindow.h has it. Of Module it needs: canvas, in an element that may
// go full screen; context, its WebGL 2 context or null; onWindow() before it is shown;
// onContextLost(isLost) when the browser has kept the graphics from us for long, and when they are
// back; onThrown(thrown) for what left the program.
mergeInto(LibraryManager["library"], {
    $SkovraWindow__deps: ["$SkovraGl"],
    $SkovraWindow: {
        eventWork: 0,
        eventSize: 1,
        eventKey: 2,
        eventSpecial: 3,

        attachAfterMs: 50,
        longestDrawingMs: 250,
        longestLossMs: 4000,
        longestTransitionMs: 1000,

        canvas: null,
        stage: null,
        context: null,
        width: 0,
        height: 0,
        isAttached: false,
        isRunning: false,
        isFullScreen: false,
        transitionEndMs: 0, // drawing waits until then for full screen
        frame: null, // signalled once the last frame is drawn
        frameMs: 0,
        timer: 0,
        lossTimer: 0,
        isWorkPosted: false,
        channel: null,
        listeners: null,
        observer: null,

        start: function() {
            SkovraWindow.canvas = Module["canvas"];
            SkovraWindow.stage = SkovraWindow.canvas.parentElement;
            SkovraWindow.context = Module["context"];
            if (!SkovraWindow.context) {
                return false;
            }
            SkovraWindow.listeners = new AbortController();
            const options = { "signal": SkovraWindow.listeners.signal };
            SkovraWindow.canvas.addEventListener("webglcontextlost", SkovraWindow.loseContext, options);
            SkovraWindow.canvas.addEventListener(
                "webglcontextrestored", SkovraWindow.restoreContext, options);
            if (SkovraWindow.context.isContextLost()) {
                SkovraWindow.beginLoss();
            }
            SkovraWindow.timer = setTimeout(SkovraWindow.attach, SkovraWindow.attachAfterMs);
            return true;
        },

        // Takes a tenth of a second: while the viewer reads the first box, if there is one.
        attach: function() {
            if (!SkovraWindow.isAttached && !SkovraWindow.context.isContextLost()) {
                SkovraWindow.isAttached = true;
                SkovraGl.attach(SkovraWindow.context);
            }
        },

        open: function(isFullScreen, width, height) {
            SkovraWindow.attach();
            const style = SkovraWindow.canvas.style;
            style.setProperty("--window-width", width);
            style.setProperty("--window-height", height);
            SkovraWindow.stage.classList.toggle("whole", isFullScreen);
            Module["onWindow"]();
            if (isFullScreen && SkovraWindow.stage.requestFullscreen) {
                SkovraWindow.enterFullScreen();
            }
        },

        // Drawing waits for the browser's answer, for the picture would change its size at once.
        enterFullScreen: function() {
            const settled = function() {
                SkovraWindow.transitionEndMs = 0;
                if (SkovraWindow.isRunning) {
                    SkovraWindow.postWork();
                } else if (SkovraWindow.stage === document.fullscreenElement) {
                    SkovraWindow.leaveFullScreen(); // the program has ended meanwhile
                }
            };
            SkovraWindow.transitionEndMs =
                performance.now() + SkovraWindow.longestTransitionMs;
            const asked = SkovraWindow.stage.requestFullscreen({ "navigationUI": "hide" });
            Promise.resolve(asked).then(settled, settled);
        },

        leaveFullScreen: function() {
            document.exitFullscreen().catch(function() {}); // the viewer was faster
        },

        loop: function() {
            SkovraWindow.isRunning = true;
            SkovraWindow.channel = new MessageChannel();
            SkovraWindow.channel.port1.onmessage = function() {
                SkovraWindow.isWorkPosted = false;
                SkovraWindow.work();
            };
            SkovraWindow.listen();
            SkovraWindow.measure(null);
            SkovraWindow.postWork();
        },

        listen: function() {
            const options = { "signal": SkovraWindow.listeners.signal };
            const canvas = SkovraWindow.canvas;
            window.addEventListener("keydown", SkovraWindow.pressKey, options);
            window.addEventListener("resize", function() {
                SkovraWindow.measure(null);
            }, options);
            // Timers may have been held back while nobody was looking.
            document.addEventListener("visibilitychange", SkovraWindow.postWork, options);
            document.addEventListener("fullscreenchange", SkovraWindow.changeFullScreen, options);
            SkovraWindow.observer = new ResizeObserver(SkovraWindow.observe);
            try {
                SkovraWindow.observer.observe(canvas, { "box": "device-pixel-content-box" });
            } catch (unsupported) {
                SkovraWindow.observer.observe(canvas);
            }
        },

        observe: function(entries) {
            const exact = entries[entries.length - 1].devicePixelContentBoxSize;
            SkovraWindow.measure(exact ? exact[0] : null);
        },

        // exact: the canvas's size on the screen where the browser knows it, for the product of size
        // and ratio is rounded one way or the other. Ratios that are only emulated are not in it.
        measure: function(exact) {
            const box = SkovraWindow.canvas.getBoundingClientRect();
            const inPixels = function(length, exactly) {
                const computed = length * window.devicePixelRatio;
                return Math.abs(exactly - computed) < 1 ? exactly : Math.round(computed);
            };
            SkovraWindow.setSize(inPixels(box.width, exact ? exact.inlineSize : NaN),
                inPixels(box.height, exact ? exact.blockSize : NaN));
        },

        setSize: function(width, height) {
            const isNew = width !== SkovraWindow.width || height !== SkovraWindow.height;
            if (isNew && width > 0 && height > 0) {
                SkovraWindow.width = width;
                SkovraWindow.height = height;
                SkovraWindow.deliver(SkovraWindow.eventSize, width, height);
            }
        },

        deliver: function(event, first, second) {
            if (!SkovraWindow.isRunning) {
                return;
            }
            try {
                SkovraWindow.wait(_SkovraWindowDeliver(event, first, second));
            } catch (thrown) {
                SkovraWindow.close();
                Module["onThrown"](thrown);
            }
        },

        wait: function(waitMs) {
            clearTimeout(SkovraWindow.timer);
            if (SkovraWindow.isBusy()) {
                SkovraWindow.timer = setTimeout(SkovraWindow.work, 1);
            } else if (waitMs === 0) {
                SkovraWindow.postWork();
            } else if (waitMs > 0) {
                SkovraWindow.timer = setTimeout(SkovraWindow.work, waitMs);
            }
        },

        // At once, but after what the page has to do: setTimeout would wait for 4 ms.
        postWork: function() {
            if (!SkovraWindow.isWorkPosted && SkovraWindow.channel) {
                SkovraWindow.isWorkPosted = true;
                SkovraWindow.channel.port2.postMessage(0);
            }
        },

        work: function() {
            if (SkovraWindow.isBusy()) {
                SkovraWindow.wait(0);
            } else {
                SkovraWindow.deliver(SkovraWindow.eventWork, 0, 0);
            }
        },

        isBusy: function() {
            const nowMs = performance.now();
            return SkovraWindow.isDrawing(nowMs) || nowMs < SkovraWindow.transitionEndMs;
        },

        // Frames drawn in software would queue up, and block the page's thread in the end.
        isDrawing: function(nowMs) {
            const context = SkovraWindow.context;
            if (SkovraWindow.frame) {
                const state = context.clientWaitSync(SkovraWindow.frame, 0, 0);
                if (state === context.TIMEOUT_EXPIRED &&
                    nowMs - SkovraWindow.frameMs < SkovraWindow.longestDrawingMs) {
                    return true;
                }
                context.deleteSync(SkovraWindow.frame);
                SkovraWindow.frame = null;
            }
            return false;
        },

        endFrame: function() {
            const context = SkovraWindow.context;
            if (SkovraWindow.frame) {
                context.deleteSync(SkovraWindow.frame);
            }
            SkovraWindow.frame = context.fenceSync(context.SYNC_GPU_COMMANDS_COMPLETE, 0);
            SkovraWindow.frameMs = performance.now();
            context.flush();
        },

        pressKey: function(event) {
            if (event.ctrlKey || event.altKey || event.metaKey || event.isComposing) {
                return;
            }
            const key = event.key;
            if (key === "Escape" && document.fullscreenElement) {
                SkovraWindow.leaveFullScreen(); // which presses Escape
                return;
            }
            const special = SkovraWindow.specialKeys[key];
            const character = SkovraWindow.characters[key] || (key.length === 1 && key.charCodeAt(0));
            if (special) {
                if (key.startsWith("Arrow")) {
                    event.preventDefault(); // the page would scroll
                }
                SkovraWindow.deliver(SkovraWindow.eventSpecial, special, 0);
            } else if (character && character < 256) {
                SkovraWindow.deliver(SkovraWindow.eventKey, character, 0);
            }
        },

        characters: { "Backspace": 8, "Tab": 9, "Enter": 13, "Escape": 27, "Delete": 127 },

        specialKeys: {
            "F1": 1, "F2": 2, "F3": 3, "F4": 4, "F5": 5, "F6": 6, "F7": 7, "F8": 8, "F9": 9,
            "F10": 10, "F11": 11, "F12": 12,
            "ArrowLeft": 100, "ArrowUp": 101, "ArrowRight": 102, "ArrowDown": 103,
            "PageUp": 104, "PageDown": 105, "Home": 106, "End": 107, "Insert": 108
        },

        // Browsers keep Escape in full screen for themselves.
        changeFullScreen: function() {
            const wasFullScreen = SkovraWindow.isFullScreen;
            SkovraWindow.isFullScreen = document.fullscreenElement === SkovraWindow.stage;
            if (wasFullScreen && !SkovraWindow.isFullScreen) {
                SkovraWindow.deliver(SkovraWindow.eventKey, SkovraWindow.characters["Escape"], 0);
            }
        },

        loseContext: function(event) {
            event.preventDefault(); // or else it does not come back
            SkovraWindow.beginLoss();
        },

        beginLoss: function() {
            SkovraGl.lose();
            SkovraWindow.frame = null;
            SkovraWindow.canvas.classList.add("lost");
            SkovraWindow.lossTimer = setTimeout(function() {
                Module["onContextLost"](true);
            }, SkovraWindow.longestLossMs);
        },

        restoreContext: function() {
            clearTimeout(SkovraWindow.lossTimer);
            Module["onContextLost"](false);
            SkovraWindow.canvas.classList.remove("lost");
            SkovraWindow.isAttached = true;
            SkovraGl.attach(SkovraWindow.context);
            SkovraWindow.deliver(SkovraWindow.eventSize, SkovraWindow.width, SkovraWindow.height);
        },

        close: function() {
            clearTimeout(SkovraWindow.timer);
            clearTimeout(SkovraWindow.lossTimer);
            SkovraWindow.listeners.abort();
            if (!SkovraWindow.isRunning) {
                return;
            }
            SkovraWindow.isRunning = false;
            SkovraWindow.observer.disconnect();
            SkovraWindow.channel.port1.close();
            SkovraWindow.channel = null;
            if (document.fullscreenElement === SkovraWindow.stage) {
                SkovraWindow.leaveFullScreen();
            }
        }
    },

    SkovraWindowStart__deps: ["$SkovraWindow"],
    SkovraWindowStart: function() {
        return SkovraWindow.start();
    },

    SkovraWindowOpen__deps: ["$SkovraWindow"],
    SkovraWindowOpen: function(isFullScreen, width, height) {
        SkovraWindow.open(!!isFullScreen, width, height);
    },

    SkovraWindowResize__deps: ["$SkovraWindow"],
    SkovraWindowResize: function(width, height) {
        SkovraWindow.canvas.width = width;
        SkovraWindow.canvas.height = height;
    },

    SkovraWindowEndFrame__deps: ["$SkovraWindow"],
    SkovraWindowEndFrame: function() {
        SkovraWindow.endFrame();
    },

    SkovraWindowSetCursor__deps: ["$SkovraWindow"],
    SkovraWindowSetCursor: function(isShown) {
        SkovraWindow.canvas.classList.toggle("without-cursor", !isShown);
    },

    SkovraWindowLoop__deps: ["$SkovraWindow"],
    SkovraWindowLoop: function() {
        SkovraWindow.loop();
        throw "unwind";
    },

    SkovraWindowClose__deps: ["$SkovraWindow"],
    SkovraWindowClose: function() {
        SkovraWindow.close();
    }
});
