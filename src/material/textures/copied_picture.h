#pragma once

#include <string>

// Picture files that the engine gets as they are. Nobody decodes them, so that every kind of picture that the
// engine knows passes; what can be seen without that is looked at.

// True if the content has not the marks of the kind that the name ends in, or, behind another ending
// (wall.bmp.psd), of no kind of picture at all: the engine goes by the name.
bool IsMisnamedPicture(const std::string& path);

// True if the file is empty or ends before the picture that its header promises; of a .dds, also if its
// header can't be true. Reads the whole file. A misnamed picture, and kinds whose length only a decoder
// knows, count as whole.
bool IsCutOffPicture(const std::string& path);
