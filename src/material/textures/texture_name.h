#pragma once

#include <string_view>

#include "host/material.h"
#include "material/export_texture.h"

class Export;

// The engine reads these files itself, so they are copied: the path holds ".bmp", ".tga" or ".dds" anywhere.
bool ExtensionIsAccepted(std::string_view path);

// Fills sourcePath, name, isCopied and inCommon from the map of the slot and its role:
//
//   source                                    name
//   accepted file of a bitmap, not as bump    its file name: the file is copied
//   any other file                            its title: the file is rebuilt
//   the same below commonTextureSource        "$/" and the path below it, sub-folders kept
//   no file, no map                           "tex12_1" of material index and slot: the file is generated
void MakeTextureName(Export& run, eExportTexture& texture);

// Fills targetPath, below resourceRoot and commonTextureTarget or in the folder of the shared resources, and
// file: that of a rebuilt texture gets ".dds" as bump map, else ".bmp".
void MakeTargetPath(Export& run, eExportTexture& texture);

// The name as a material record holds it: that of a copied file is cut at the last dot behind the last slash;
// the others have no extension, and a dot in them (wall.01) belongs to the file's title.
std::string GetEngineTextureName(const eExportTexture& texture);
