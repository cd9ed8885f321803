# Shared by the scripts: packages for building, and a configured build tree.
BUILD_PACKAGES=(g++ make cmake pkg-config qtbase5-dev qtbase5-dev-tools libqt5svg5-dev fonts-dejavu-core ca-certificates)
TEST_PACKAGES=(python3 tzdata librsvg2-bin poppler-utils)
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
JOBS="${JOBS:-$(nproc 2>/dev/null || echo 2)}"

configure_and_build() {
    local dir="$1"; shift
    cmake -S "$ROOT" -B "$dir" -DCMAKE_BUILD_TYPE="${BUILD_TYPE:-RelWithDebInfo}" "$@" >/dev/null
    cmake --build "$dir" -j "$JOBS"
}
