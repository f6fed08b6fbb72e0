#include "texture/dds_header.h"

namespace {

// Header, all numbers of 4 bytes, little-endian:
//
//   offset  field
//        0  size of the header, 124
//        4  flags
//        8  height
//       12  width
//       16  bytes of the first level
//       20  depth
//       24  mip count
//       28  eleven reserved numbers
//       72  size of the pixel format, 32
//       76  pixel format: flags
//       80  FourCC
//       84  bits a pixel
//       88  mask of red
//       92  mask of green
//       96  mask of blue
//      100  mask of alpha
//      104  capabilities
//      108  more capabilities
//      112  three reserved numbers
//
// Calls visit(offset, field) for each field that is not reserved.
template <class Header, class Visit>
void VisitFields(Header& header, Visit visit) {
    visit(0, header.size);
    visit(4, header.flags);
    visit(8, header.height);
    visit(12, header.width);
    visit(16, header.firstLevelBytes);
    visit(20, header.depth);
    visit(24, header.mipCount);
    visit(72, header.pixelFormatSize);
    visit(76, header.pixelFormat.flags);
    visit(80, header.pixelFormat.fourCc);
    visit(84, header.pixelFormat.bitCount);
    visit(88, header.pixelFormat.redMask);
    visit(92, header.pixelFormat.greenMask);
    visit(96, header.pixelFormat.blueMask);
    visit(100, header.pixelFormat.alphaMask);
    visit(104, header.capabilities);
    visit(108, header.moreCapabilities);
}

}  // namespace

eDdsHeaderBytes WriteDdsHeader(const eDdsHeader& header) {
    eDdsHeaderBytes bytes{};
    VisitFields(header, [&](std::size_t offset, std::uint32_t value) {
        for (std::size_t byte = 0; byte < 4; byte++) {
            bytes[offset + byte] = static_cast<std::uint8_t>(value >> (8 * byte));
        }
    });
    return bytes;
}

eDdsHeader ReadDdsHeader(const eDdsHeaderBytes& bytes) {
    eDdsHeader header;
    VisitFields(header, [&](std::size_t offset, std::uint32_t& value) {
        value = 0;
        for (std::size_t byte = 4; byte-- > 0;) {
            value = (value << 8) | bytes[offset + byte];
        }
    });
    return header;
}
