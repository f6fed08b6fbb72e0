#pragma once

// The one way out for what the strip generator has to say about a mesh.

using eStripMessageSink = void (*)(const char* text);

// Where the lines go: standard output, unless a test puts its own function here.
extern eStripMessageSink stripMessageSink;
