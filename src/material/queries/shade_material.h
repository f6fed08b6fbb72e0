#pragma once

#include "host/material.h"

class Export;

// The colour of a whole material at the surface position `uv`, at the time, without lights; alpha is 1. A
// null material has a greenish grey of its own.
host::AColor ShadeMaterial(Export& run, host::Mtl* material, host::TimeValue t, const host::Point2& uv);
