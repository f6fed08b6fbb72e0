#include "mesh/read/frame_extent.h"

namespace {

template <class T>
void Cut(std::vector<T>& list, std::size_t size) {
    if (list.size() > size) {
        list.resize(size);
    }
}

template <class T>
void Fill(const std::vector<T>& from, std::vector<T>& list, std::size_t size) {
    if (list.size() < size) {
        const auto begin = from.begin();
        list.insert(list.end(), begin + static_cast<std::ptrdiff_t>(list.size()),
                    begin + static_cast<std::ptrdiff_t>(size));
    }
}

template <class T>
void Fill(const eFaceValues<T>& from, eFaceValues<T>& list, std::size_t size) {
    list.Reserve(size);
    while (list.size() < size) {
        list.Add(from[list.size()]);
    }
}

}  // namespace

eFrameExtent ExtentOf(const eExportMeshFrame& frame) {
    return {frame.positions.size(), frame.cornerNormals.size()};
}

void CutFrame(eExportMeshFrame& frame, const eFrameExtent& extent) {
    Cut(frame.positions, extent.vertices);
    Cut(frame.cornerNormals, extent.faces);
    Cut(frame.mapCoords0, extent.faces);
    frame.mapCoords1.Cut(extent.faces);
    frame.colors.Cut(extent.faces);
}

void FillFromFirstFrame(const eExportMesh& mesh, eExportMeshFrame& frame, const eFrameExtent& extent) {
    const eExportMeshFrame& first = mesh.frames.front();
    Fill(first.positions, frame.positions, extent.vertices);
    Fill(first.cornerNormals, frame.cornerNormals, extent.faces);
    Fill(first.mapCoords0, frame.mapCoords0, extent.faces);
    Fill(first.mapCoords1, frame.mapCoords1, extent.faces);
    Fill(first.colors, frame.colors, extent.faces);
}
