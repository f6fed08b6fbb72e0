#pragma once

namespace standalone {

// Several lambdas as one visitor of a variant.
template <class... Cases>
struct eOverloaded : Cases... {
    using Cases::operator()...;
};

// For compilers that can't deduce an aggregate's arguments themselves.
template <class... Cases>
eOverloaded(Cases...) -> eOverloaded<Cases...>;

}  // namespace standalone
