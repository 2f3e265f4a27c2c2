// The browser's decoder, for BrowserDecoder.cpp.
"use strict";

mergeInto(LibraryManager["library"], {
    $SkovraMusic: {
        all: [],
    },

    SkovraMusicBegin__deps: ["$SkovraMusic"],
    SkovraMusicBegin: function (bytes, size, rateHz) {
        const music = { left: null, right: null, refused: false };
        const done = function (decoded) {
            music.left = decoded.getChannelData(0);
            music.right = decoded.numberOfChannels > 1 ? decoded.getChannelData(1) : music.left;
        };
        const fail = function () {
            music.refused = true;
        };
        try {
            const context = new OfflineAudioContext(2, 1, rateHz);
            context.decodeAudioData(HEAPU8.slice(bytes, bytes + size).buffer).then(done, fail);
        } catch (error) {
            fail();
        }
        return SkovraMusic.all.push(music) - 1;
    },

    SkovraMusicFrames__deps: ["$SkovraMusic"],
    SkovraMusicFrames: function (number) {
        const music = SkovraMusic.all[number];
        return music.refused ? -2 : music.left === null ? -1 : music.left.length;
    },

    SkovraMusicCopy__deps: ["$SkovraMusic"],
    SkovraMusicCopy: function (number, first, count, frames) {
        const music = SkovraMusic.all[number];
        let to = frames >> 2;
        for (let i = first; i < first + count; i++) {
            HEAPF32[to++] = music.left[i];
            HEAPF32[to++] = music.right[i];
        }
    },

    SkovraMusicForget__deps: ["$SkovraMusic"],
    SkovraMusicForget: function (number) {
        SkovraMusic.all[number] = null;
    },
});
