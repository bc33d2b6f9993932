# What ./test and scripts/test-more do with each preset. They include this file at the root of the tree.
jobs=$(nproc)
runner=()  # the command that starts the steps
mkdir -p build

# build_preset PRESET [OPTION...]: configures and builds. The log is shown if that fails.
build_preset() {
    local preset=$1 log=build/.$1.log
    shift
    echo "== $preset: configure and build"
    "${runner[@]}" cmake --preset "$preset" -DGENUTIL_TESTS=ON >"$log" 2>&1 || { cat "$log"; exit 1; }
    "${runner[@]}" cmake --build --preset "$preset" -j "$jobs" "$@" >"$log" 2>&1 || { tail -n 60 "$log"; exit 1; }
}

# test_preset PRESET [OPTION...]: runs the tests, or those that options of ctest select. Tests that talk
# to other programs through Wine are labelled "repeatable" in tests/CMakeLists.txt: they may fail once,
# which is reported.
test_preset() {
    local preset=$1
    echo "== $preset: test"
    case $preset in
    win*)
        ctest --preset "$@" -j "$jobs" --label-exclude repeatable
        ctest --preset "$@" --show-only --label-regex repeatable | grep -q '^Total Tests: 0$' && return
        ctest --preset "$@" -j "$jobs" --label-regex repeatable --repeat until-pass:2 | tee build/.repeatable.log
        sed -nE 's/.*Test +#[0-9]+: ([A-Za-z_.]+) .*\*\*\*.*/== repeated after a failure: \1/p' \
            build/.repeatable.log
        ;;
    *) "${runner[@]}" ctest --preset "$@" -j "$jobs" ;;
    esac
}
