#include "inspect/placement.h"

#include "base/number_text.h"

namespace inspect {

namespace {

// Rows of three numbers behind each other, into the rows from `first` on.
void ReadRows(const eSdlBlock* block, std::size_t first, host::DMatrix3& matrix) {
    const std::vector<std::string> numbers = block != nullptr ? block->Values() : std::vector<std::string>();
    for (std::size_t i = 0; i < numbers.size() && first + i / 3 < 4; ++i) {
        matrix.rows[first + i / 3][i % 3] = ReadReal(numbers[i]);
    }
}

}  // namespace

host::DMatrix3 PlacementOf(const eSdlBlock& block) {
    host::DMatrix3 matrix;
    ReadRows(block.Find("matrix34"), 0, matrix);
    ReadRows(block.Find("orientation"), 0, matrix);
    ReadRows(block.Find("Position"), 3, matrix);
    return matrix;
}

}  // namespace inspect
