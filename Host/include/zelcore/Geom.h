#pragma once

namespace zelcore::geom {

template <class T>
struct PointT {
    T x{};
    T y{};
    // Unordered values (NaN) are never equal, so a point holding one always counts as changed.
    friend constexpr bool operator==(const PointT& inA, const PointT& inB) { return inA.x == inB.x && inA.y == inB.y; }
};

} // namespace zelcore::geom
