#!/usr/bin/env bash
# Sets up a Debian 12 machine for common_gui, builds it, and runs the gallery or the tests.
#
#   ./build.sh gallery      install what is missing, build, run the gallery
#                           (without a display: render every page to gallery-screenshots/)
#   ./build.sh test         install, build, run every test: normal build, then sanitizer build
#   ./build.sh test normal  only the normal build;   ./build.sh test sanitize  only the sanitizer build
#   ./build.sh bench        build and run the benchmarks (CG_BENCH_SMOKE=1 for a quick run)
#   ./build.sh fuzz [SECONDS]  install clang, build the fuzz targets, run each on a copy of its seed
#                           corpus for SECONDS (30); fails on the first report. New findings are
#                           left in build-fuzz/findings/<target>/ for tests/data/fuzz/<target>/.
#
# CG_QT_MAJOR=6 ./build.sh ... does the same against Qt 6 (default 5), in build-qt6/ and
# build-qt6-sanitize/ so that both majors' builds live side by side.
set -euo pipefail
cd "$(dirname "$0")"

mode=${1:-gallery}
variant=${2:-all}
jobs=$(nproc)

as_root() { if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi; }

qt_major=${CG_QT_MAJOR:-5}
case "$qt_major" in
  5) qt_packages=(qtbase5-dev qtbase5-dev-tools libqt5x11extras5-dev qttranslations5-l10n)
     build_dir=build ;;
  6) qt_packages=(qt6-base-dev qt6-base-dev-tools qt6-5compat-dev qt6-translations-l10n libgl-dev)
     build_dir=build-qt6 ;;
  *) echo "CG_QT_MAJOR must be 5 or 6, not '$qt_major'" >&2; exit 2 ;;
esac
packages=(cmake g++ make pkg-config "${qt_packages[@]}"
          libx11-dev libbenchmark-dev xvfb xauth trayer locales)

install_missing() {
  local missing=()
  for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
  done
  if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    as_root apt-get update -qq
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
  fi
  # The locale tests switch to ru_RU.UTF-8; setlocale fails for a locale the machine lacks.
  if ! locale -a 2>/dev/null | grep -qi '^ru_RU\.utf8$'; then
    as_root sed -i 's/^# *\(ru_RU.UTF-8 UTF-8\)/\1/; s/^# *\(en_US.UTF-8 UTF-8\)/\1/' /etc/locale.gen
    as_root locale-gen >/dev/null
  fi
}

configure_build() { # dir, extra cmake args...
  local dir=$1; shift
  cmake -S . -B "$dir" -DCG_QT_MAJOR="$qt_major" "$@" >/dev/null
  cmake --build "$dir" -j"$jobs"
}

run_tests() { # dir
  (cd "$1" && ctest --output-on-failure -j"$jobs")
}

# clang and its libFuzzer are needed only to fuzz.
[ "$mode" = fuzz ] && packages+=(clang)

fuzz() { # seconds per target
  # A fixed seed makes a run repeatable (CI meets the inputs a developer met); CG_FUZZ_SEED=0 picks
  # a random one for exploring.
  local seconds=$1 dir=${build_dir/build/build-fuzz}
  CC=clang CXX=clang++ cmake -S . -B "$dir" -DCG_QT_MAJOR="$qt_major" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCG_FUZZ=ON \
    -DCG_BUILD_TESTS=OFF -DCG_BUILD_GALLERY=OFF -DCG_BUILD_BENCH=OFF >/dev/null
  local targets
  targets=$(sed -n 's/^set(CG_FUZZ_TARGETS \(.*\))$/\1/p' CMakeLists.txt)
  # shellcheck disable=SC2086
  cmake --build "$dir" -j"$jobs" --target $targets
  local failed=0
  for t in $targets; do
    local work="$dir/work/$t" findings="$dir/findings/$t"
    rm -rf "$work" && mkdir -p "$work" "$findings"
    cp fuzz/corpus/"$t"/* "$work"/
    echo "fuzzing $t for ${seconds}s"
    if ! ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
         LSAN_OPTIONS=suppressions=$PWD/tests/lsan.supp:print_suppressions=0 \
         "$dir/bin/$t" -seed="${CG_FUZZ_SEED:-1}" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -max_len=65536 \
         -artifact_prefix="$findings/" -print_final_stats=1 "$work" >"$dir/$t.log" 2>&1; then
      echo "$t: REPORT (see $dir/$t.log; input in $findings/)"
      tail -40 "$dir/$t.log"
      failed=1
    fi
    grep -E '^stat::number_of_executed_units' "$dir/$t.log" | sed "s/^/$t: /" || true
  done
  return $failed
}

install_missing
case "$mode" in
  gallery)
    configure_build "$build_dir" -DCMAKE_BUILD_TYPE=Release
    exec "./$build_dir/bin/common_gui_gallery" "${@:2}"
    ;;
  test)
    if [ "$variant" = all ] || [ "$variant" = normal ]; then
      configure_build "$build_dir" -DCMAKE_BUILD_TYPE=Release
      run_tests "$build_dir"
    fi
    if [ "$variant" = all ] || [ "$variant" = sanitize ]; then
      configure_build "$build_dir-sanitize" -DCMAKE_BUILD_TYPE=Debug -DCG_SANITIZE=ON -DCG_BUILD_BENCH=OFF
      run_tests "$build_dir-sanitize"
    fi
    ;;
  bench)
    configure_build "$build_dir" -DCMAKE_BUILD_TYPE=Release
    "./$build_dir/bin/cg_bench" "${@:2}"
    ;;
  fuzz)
    fuzz "${2:-30}"
    ;;
  *)
    echo "usage: [CG_QT_MAJOR=5|6] $0 gallery|test [normal|sanitize]|bench|fuzz [SECONDS]" >&2
    exit 2
    ;;
esac
