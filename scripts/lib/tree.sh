# shellcheck shell=bash
# The folders of this tree.

TREE=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
# shellcheck disable=SC2034  # other files use it
BUILD_ROOT=$TREE/build
