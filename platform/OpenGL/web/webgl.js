// Draws the batches of the fixed-function pipeline by WebGL 2, and keeps what a restored context
// needs. Asks the context nothing while frames are drawn: it would wait for the graphics card.
"use strict";

mergeInto(LibraryManager["library"], {
    $SkovraGl: {
        context: null, // null: there is none, or it is lost
        programs: {}, // by what their pixels need: { program, alphaReference }
        pictures: {}, // by path: { bitmap, texture, sampling }
        textures: {}, // the same, by name
        largestTextureSide: 0x7FFFFFFF, // as long as no context has told

        // As many floats as a Vertex has, and where its parts begin.
        vertexFloats: 11,
        attributes: [["position", 4, 0], ["colour", 4, 4], ["place", 3, 8]],

        vertexShader: "#version 300 es\n" +
            "in vec4 position;\n" +
            "in vec4 colour;\n" +
            "in vec3 place;\n" +
            "out vec4 shade;\n" +
            "out vec3 texel;\n" +
            "void main() {\n" +
            "    gl_Position = position;\n" +
            "    shade = colour;\n" +
            "    texel = place;\n" +
            "}\n",

        // The comparisons of the alpha test in the order of OpenGL's values, from GL_NEVER.
        alphaTests: ["false", "alpha < alphaReference", "alpha == alphaReference",
            "alpha <= alphaReference", "alpha > alphaReference", "alpha != alphaReference",
            "alpha >= alphaReference"],
        alwaysPasses: 7,

        fragmentShader: function (isTextured, alphaFunction) {
            const test = SkovraGl.alphaTests[alphaFunction];
            return "#version 300 es\n" +
                "precision highp float;\n" +
                "uniform sampler2D picture;\n" +
                "uniform float alphaReference;\n" +
                "in vec4 shade;\n" +
                "in vec3 texel;\n" +
                "out vec4 result;\n" +
                "void main() {\n" +
                "    result = shade" + (isTextured ? " * textureProj(picture, texel)" : "") + ";\n" +
                "    float alpha = result.a;\n" +
                (test ? "    if (!(" + test + ")) { discard; }\n" : "") +
                "}\n";
        },

        // Makes a WebGL 2 context the one that is drawn to: a new one, or one that was restored.
        attach: function (context) {
            SkovraGl.context = context;
            SkovraGl.largestTextureSide = context.getParameter(context.MAX_TEXTURE_SIZE);
            SkovraGl.programs = {};
            SkovraGl.programFor(false, SkovraGl.alwaysPasses);
            SkovraGl.programFor(true, SkovraGl.alwaysPasses);
            SkovraGl.makeBuffer(context);
            context.enable(context.BLEND); // by one and zero where there is none
            // All that there are, before they are asked for: it takes a while.
            for (const path of Object.keys(Module["pictures"] || {})) {
                const picture = SkovraGl.pictureAt(path);
                if (picture) {
                    SkovraGl.makeTexture(picture);
                }
            }
        },

        // null: the browser has refused it, or there is none.
        pictureAt: function (path) {
            const bitmap = (Module["pictures"] || {})[path];
            if (bitmap && !SkovraGl.pictures[path]) {
                SkovraGl.pictures[path] = { bitmap: bitmap, texture: null, sampling: "" };
            }
            return bitmap ? SkovraGl.pictures[path] : null;
        },

        // The context was lost: nothing is drawn until the next attach.
        lose: function () {
            SkovraGl.context = null;
        },

        makeShader: function (context, type, text) {
            const shader = context.createShader(type);
            context.shaderSource(shader, text);
            context.compileShader(shader);
            return shader;
        },

        // One for each alpha test, for a test costs time at each pixel. Those that a show needs are
        // made before it draws.
        programFor: function (isTextured, alphaFunction) {
            const key = isTextured + "," + alphaFunction;
            if (!SkovraGl.programs[key]) {
                SkovraGl.programs[key] = SkovraGl.makeProgram(isTextured, alphaFunction);
            }
            return SkovraGl.programs[key];
        },

        makeProgram: function (isTextured, alphaFunction) {
            const context = SkovraGl.context;
            const program = context.createProgram();
            context.attachShader(program, SkovraGl.makeShader(
                context, context.VERTEX_SHADER, SkovraGl.vertexShader));
            context.attachShader(program, SkovraGl.makeShader(
                context, context.FRAGMENT_SHADER, SkovraGl.fragmentShader(isTextured, alphaFunction)));
            SkovraGl.attributes.forEach(function (attribute, index) {
                context.bindAttribLocation(program, index, attribute[0]);
            });
            context.linkProgram(program);
            const hasTest = alphaFunction !== SkovraGl.alwaysPasses; // to ask waits for the compiler
            return {
                program: program,
                alphaReference: hasTest ? context.getUniformLocation(program, "alphaReference") : null,
            };
        },

        makeBuffer: function (context) {
            context.bindBuffer(context.ARRAY_BUFFER, context.createBuffer());
            SkovraGl.attributes.forEach(function (attribute, index) {
                context.enableVertexAttribArray(index);
                context.vertexAttribPointer(index, attribute[1], context.FLOAT, false,
                    4 * SkovraGl.vertexFloats, 4 * attribute[2]);
            });
        },

        makeTexture: function (picture) {
            const context = SkovraGl.context;
            picture.texture = context.createTexture();
            picture.sampling = "";
            context.bindTexture(context.TEXTURE_2D, picture.texture);
            context.texImage2D(context.TEXTURE_2D, 0, context.RGBA8, context.RGBA,
                context.UNSIGNED_BYTE, picture.bitmap);
        },

        // wrap S, wrap T, minifying, magnifying
        setSampling: function (picture, values) {
            const context = SkovraGl.context;
            const sampling = values.join();
            if (picture.sampling === sampling) {
                return;
            }
            picture.sampling = sampling;
            const clamp = 0x2900; // GL_CLAMP, which WebGL does not have
            const wrap = function (value) {
                return value === clamp ? context.CLAMP_TO_EDGE : value;
            };
            const set = function (parameter, value) {
                context.texParameteri(context.TEXTURE_2D, parameter, value);
            };
            set(context.TEXTURE_WRAP_S, wrap(values[0]));
            set(context.TEXTURE_WRAP_T, wrap(values[1]));
            set(context.TEXTURE_MIN_FILTER, values[2]);
            set(context.TEXTURE_MAG_FILTER, values[3]);
        },

        // The fields of a DrawState: words of 4 bytes.
        setState: function (words, floats) {
            const context = SkovraGl.context;
            const picture = SkovraGl.textures[words[0]];
            const program = SkovraGl.programFor(!!picture, words[8] - context.NEVER);
            context.useProgram(program.program);
            if (program.alphaReference) {
                context.uniform1f(program.alphaReference, floats[9]);
            }
            context.bindTexture(context.TEXTURE_2D, picture ? picture.texture : null);
            if (picture) {
                SkovraGl.setSampling(picture, Array.from(words.subarray(1, 5)));
            }
            context.blendFunc(words[5], words[6]);
            context.depthFunc(words[7]);
            if (words[10]) {
                context.enable(context.DEPTH_TEST);
            } else {
                context.disable(context.DEPTH_TEST);
            }
            context.viewport(words[11], words[12], words[13], words[14]);
        },
    },

    SkovraGlClear__deps: ["$SkovraGl"],
    SkovraGlClear: function (buffers, red, green, blue, alpha, depth) {
        const context = SkovraGl.context;
        if (context) {
            context.clearColor(red, green, blue, alpha);
            context.clearDepth(depth);
            context.clear(buffers);
        }
    },

    SkovraGlDraw__deps: ["$SkovraGl"],
    SkovraGlDraw: function (state, vertices, count) {
        const context = SkovraGl.context;
        if (context) {
            SkovraGl.setState(HEAPU32.subarray(state >> 2, (state >> 2) + 15),
                HEAPF32.subarray(state >> 2, (state >> 2) + 15));
            context.bufferData(context.ARRAY_BUFFER, HEAPF32, context.STREAM_DRAW,
                vertices >> 2, count * SkovraGl.vertexFloats);
            context.drawArrays(context.TRIANGLES, 0, count);
        }
    },

    SkovraGlLargestTextureSide__deps: ["$SkovraGl"],
    SkovraGlLargestTextureSide: function () {
        return SkovraGl.largestTextureSide;
    },

    // 1: done. Where the context is lost the picture is kept for the restored one.
    SkovraGlUploadPicture__deps: ["$SkovraGl"],
    SkovraGlUploadPicture: function (texture, path, width, height) {
        const picture = SkovraGl.pictureAt(
            new TextDecoder().decode(HEAPU8.subarray(path, HEAPU8.indexOf(0, path))));
        if (!picture || picture.bitmap.width !== width || picture.bitmap.height !== height) {
            return 0;
        }
        SkovraGl.textures[texture] = picture;
        return 1;
    },
});
