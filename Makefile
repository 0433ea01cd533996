# The README's commands. Each target does its own set-up on a fresh Debian 12 machine.
BUILD      ?= build
BUILD_ASAN ?= build-asan
BUILD_REL  ?= build-release
JOBS       ?= $(shell nproc)
# ccache, where installed, lets several checkouts share one compile cache.
CCACHE := $(shell command -v ccache 2>/dev/null)
CMAKE_FLAGS ?= $(if $(CCACHE),-DCMAKE_CXX_COMPILER_LAUNCHER=$(CCACHE))

.PHONY: all deps build run test test-asan bench format format-check fuzz clean check-report

all: build

deps:
	@./scripts/install-deps.sh

$(BUILD)/build.ninja:
	cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_FLAGS)

build: deps $(BUILD)/build.ninja
	cmake --build $(BUILD) -j $(JOBS)

run: build
	./$(BUILD)/src/app/tarvane $(ARGS)

test: build
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS)

# The same tests built with AddressSanitizer and UndefinedBehaviorSanitizer (clang).
test-asan: deps
	./scripts/install-deps.sh --ci
	CC=clang CXX=clang++ cmake -S . -B $(BUILD_ASAN) -G Ninja -DCMAKE_BUILD_TYPE=Debug \
	    -DTARVANE_SANITIZE=ON -DTARVANE_FUZZ=ON -DTARVANE_BENCH=OFF
	cmake --build $(BUILD_ASAN) -j $(JOBS)
	cd $(BUILD_ASAN) && ASAN_OPTIONS=detect_leaks=0 UBSAN_OPTIONS=print_stacktrace=1 \
	    ctest --output-on-failure -j $(JOBS)

# Runs each fuzzer briefly over its seed corpus (built by test-asan).
fuzz: test-asan
	./scripts/run-fuzzers.sh $(BUILD_ASAN) $(or $(FUZZ_SECONDS),20)

# The summary report printed by headless Chromium (installs chromium; meant for CI).
check-report: test
	./scripts/check-report-browser.sh $(BUILD)

bench: deps
	cmake -S . -B $(BUILD_REL) -G Ninja -DCMAKE_BUILD_TYPE=Release
	cmake --build $(BUILD_REL) -j $(JOBS)
	./scripts/run-benchmarks.sh $(BUILD_REL)

FORMAT_FILES = $(shell git ls-files -co --exclude-standard -- '*.cpp' '*.h')

format: deps
	clang-format -i $(FORMAT_FILES)

format-check: deps
	@clang-format --dry-run --Werror $(FORMAT_FILES) && echo "format: clean"

clean:
	rm -rf $(BUILD) $(BUILD_ASAN) $(BUILD_REL)
