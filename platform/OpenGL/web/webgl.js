// Draws the batches of the fixed-function pipeline by WebGL 2, and keeps what a restored context
// needs. Asks the context nothing while frames are drawn: it would wait for the graphics card.
"use strict";

mergeInto(LibraryManager.library, {
    $SkovraGl: {
        context: null, // null: there is none, or it is lost
        program: null,
        uniforms: null,
        textures: {}, // by name: { bitmap, texture, sampling }
        largestTextureSide: 0,

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
        fragmentShader: "#version 300 es\n" +
            "precision highp float;\n" +
            "uniform sampler2D picture;\n" +
            "uniform bool isTextured;\n" +
            "uniform int alphaFunction;\n" +
            "uniform float alphaReference;\n" +
            "in vec4 shade;\n" +
            "in vec3 texel;\n" +
            "out vec4 result;\n" +
            "bool passes(float alpha) {\n" +
            "    switch (alphaFunction) {\n" +
            "    case 0: return false;\n" +
            "    case 1: return alpha < alphaReference;\n" +
            "    case 2: return alpha == alphaReference;\n" +
            "    case 3: return alpha <= alphaReference;\n" +
            "    case 4: return alpha > alphaReference;\n" +
            "    case 5: return alpha != alphaReference;\n" +
            "    case 6: return alpha >= alphaReference;\n" +
            "    default: return true;\n" +
            "    }\n" +
            "}\n" +
            "void main() {\n" +
            "    vec4 found = textureProj(picture, texel);\n" +
            "    result = isTextured ? shade * found : shade;\n" +
            "    if (!passes(result.a)) {\n" +
            "        discard;\n" +
            "    }\n" +
            "}\n",

        // Makes a WebGL 2 context the one that is drawn to: a new one, or one that was restored.
        attach: function (context) {
            SkovraGl.context = context;
            SkovraGl.largestTextureSide = context.getParameter(context.MAX_TEXTURE_SIZE);
            SkovraGl.makeProgram(context);
            SkovraGl.makeBuffer(context);
            context.enable(context.BLEND); // by one and zero where there is none
            for (const name of Object.keys(SkovraGl.textures)) {
                SkovraGl.makeTexture(SkovraGl.textures[name]);
            }
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

        makeProgram: function (context) {
            const program = context.createProgram();
            context.attachShader(program, SkovraGl.makeShader(
                context, context.VERTEX_SHADER, SkovraGl.vertexShader));
            context.attachShader(program, SkovraGl.makeShader(
                context, context.FRAGMENT_SHADER, SkovraGl.fragmentShader));
            SkovraGl.attributes.forEach(function (attribute, index) {
                context.bindAttribLocation(program, index, attribute[0]);
            });
            context.linkProgram(program);
            context.useProgram(program);
            SkovraGl.uniforms = {};
            for (const name of ["isTextured", "alphaFunction", "alphaReference"]) {
                SkovraGl.uniforms[name] = context.getUniformLocation(program, name);
            }
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
            const uniforms = SkovraGl.uniforms;
            const picture = SkovraGl.textures[words[0]];
            context.uniform1i(uniforms.isTextured, picture ? 1 : 0);
            context.bindTexture(context.TEXTURE_2D, picture ? picture.texture : null);
            if (picture) {
                SkovraGl.setSampling(picture, Array.from(words.subarray(1, 5)));
            }
            context.blendFunc(words[5], words[6]);
            context.depthFunc(words[7]);
            context.uniform1i(uniforms.alphaFunction, words[8] - context.NEVER);
            context.uniform1f(uniforms.alphaReference, floats[9]);
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
        const name = new TextDecoder().decode(HEAPU8.subarray(path, HEAPU8.indexOf(0, path)));
        const pictures = Module["pictures"];
        const bitmap = pictures ? pictures[name] : null;
        if (!bitmap || bitmap.width !== width || bitmap.height !== height) {
            return 0;
        }
        const picture = { bitmap: bitmap, texture: null, sampling: "" };
        SkovraGl.textures[texture] = picture;
        if (SkovraGl.context) {
            SkovraGl.makeTexture(picture);
        }
        return 1;
    },
});
