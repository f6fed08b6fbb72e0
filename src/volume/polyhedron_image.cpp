#include "volume/polyhedron_image.h"

#include <cstring>

#include "base/format.h"
#include "io/streams/stream_memory.h"

namespace {

constexpr int kGrowStep = 256;

void WriteVertices(xIo::eStream& image, const host::Mesh& mesh, const host::Matrix3& toVolume,
                   float metresPerUnit) {
    image.Write("VERT", 4);
    image.WriteValue(static_cast<std::int32_t>(mesh.verts.size()));
    for (const host::Point3& vertex : mesh.verts) {
        const host::Point3 placed = metresPerUnit * (vertex * toVolume);
        image.WriteValue(placed.x);
        image.WriteValue(placed.y);
        image.WriteValue(placed.z);
    }
}

void WriteIndices(xIo::eStream& image, const host::Mesh& mesh) {
    image.Write("INDX", 4);
    image.WriteValue(static_cast<std::int32_t>(3 * mesh.faces.size()));
    for (const host::Face& face : mesh.faces) {
        for (const int corner : {2, 1, 0}) {
            image.WriteValue(static_cast<std::uint16_t>(face.v[corner]));
        }
    }
}

void WriteSides(xIo::eStream& image, const host::Mesh& mesh) {
    image.Write("SIDE", 4);
    image.WriteValue(static_cast<std::int32_t>(mesh.faces.size()));
    for (const host::Face& face : mesh.faces) {
        image.WriteByte(static_cast<std::uint8_t>(face.getMatID() + 1));
    }
}

int HexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

// Reads an image from its text form; after the first problem every read gives nothing.
class eImageReader {
public:
    explicit eImageReader(std::string_view hexText) : text(hexText) {}

    bool Failed() const { return !problem.empty(); }
    const std::string& Problem() const { return problem; }

    void Tag(const char* tag) {
        char found[4] = {};
        Bytes(found, 4);
        if (!Failed() && std::memcmp(found, tag, 4) != 0) {
            Fail((format("the tag %1% is missing") % tag).Text());
        }
    }

    // A count of elements, checked against the bytes that are left.
    std::size_t Count(std::size_t bytesPerElement) {
        std::int32_t count = 0;
        Bytes(&count, sizeof count);
        if (!Failed() && (count < 0 || static_cast<std::size_t>(count) > Left() / bytesPerElement)) {
            Fail((format("a count of %1% is more than the image holds") % count).Text());
        }
        return Failed() ? 0 : static_cast<std::size_t>(count);
    }

    template <class T>
    std::vector<T> Elements(std::size_t count) {
        std::vector<T> elements(Failed() ? 0 : count);
        Bytes(elements.data(), elements.size() * sizeof(T));
        return elements;
    }

    void Fail(const std::string& reason) {
        problem =
            (format("%1% at byte %2% of the image") % reason % static_cast<std::uint64_t>(position)).Text();
    }

    std::size_t Left() const { return text.size() / 2 - position; }

private:
    void Bytes(void* target, std::size_t count) {
        if (Failed()) {
            return;
        }
        if (count > Left()) {
            return Fail("the image ends");
        }
        auto* bytes = static_cast<std::uint8_t*>(target);
        for (std::size_t i = 0; i < count; ++i) {
            const int high = HexDigit(text[2 * position]);
            const int low = HexDigit(text[2 * position + 1]);
            if (high < 0 || low < 0) {
                return Fail("a character is no hexadecimal digit");
            }
            bytes[i] = static_cast<std::uint8_t>(high * 16 + low);
            ++position;
        }
    }

    std::string_view text;
    std::size_t position = 0;  // in bytes of the image
    std::string problem;
};

}  // namespace

std::vector<std::uint8_t> MakePolyhedronImage(const host::Mesh& mesh, const host::Matrix3& toVolume,
                                              float metresPerUnit) {
    xIo::eMemoryStream image(kGrowStep, kGrowStep);
    image.Write("EVLM", 4);
    WriteVertices(image, mesh, toVolume, metresPerUnit);
    WriteIndices(image, mesh);
    WriteSides(image, mesh);
    image.Seek(0, xIo::fromStart);
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(image.Size()));
    image.Read(bytes.data(), image.Size());
    return bytes;
}

std::string HexText(const std::vector<std::uint8_t>& bytes) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    text.reserve(2 * bytes.size());
    for (const std::uint8_t byte : bytes) {
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

std::optional<ePolyhedron> ReadPolyhedron(std::string_view hexText, std::string& problem) {
    static_assert(sizeof(host::Point3) == 3 * sizeof(float), "vertices are read as they stand");
    eImageReader reader(hexText);
    ePolyhedron polyhedron;
    reader.Tag("EVLM");
    reader.Tag("VERT");
    polyhedron.vertices = reader.Elements<host::Point3>(reader.Count(sizeof(host::Point3)));
    reader.Tag("INDX");
    polyhedron.indices = reader.Elements<std::uint16_t>(reader.Count(sizeof(std::uint16_t)));
    reader.Tag("SIDE");
    polyhedron.sides = reader.Elements<std::uint8_t>(reader.Count(1));
    if (!reader.Failed() && polyhedron.indices.size() != 3 * polyhedron.sides.size()) {
        reader.Fail("the numbers of indices and sides differ");
    }
    if (!reader.Failed() && (reader.Left() != 0 || hexText.size() % 2 != 0)) {
        reader.Fail("something stands behind the sides");
    }
    problem = reader.Problem();
    return reader.Failed() ? std::nullopt : std::optional(std::move(polyhedron));
}
