#pragma once

namespace standalone {

// Several lambdas as one visitor of a variant.
template <class... Cases>
struct eOverloaded : Cases... {
    using Cases::operator()...;
};

}  // namespace standalone
