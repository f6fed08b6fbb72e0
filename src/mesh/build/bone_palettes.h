#pragma once

struct eExportBone;

// Divides the faces of a skinned mesh into palettes of at most 25 bone numbers, none of them split, and gives
// each face the number of its palette. A palette takes, in face order, every face whose new numbers still
// fit. Costs faces times palettes.
void BuildBonePalettes(eExportBone& bone);
