# The README's commands. Each target does its own set-up on a fresh Debian 12 machine.
BUILD      ?= build
BUILD_ASAN ?= build-asan
BUILD_REL  ?= build-release
BUILD_FUZZ ?= build-fuzz
JOBS       ?= $(shell nproc)
# ccache, where installed, lets several checkouts share one compile cache.
CCACHE := $(shell command -v ccache 2>/dev/null)
CMAKE_FLAGS ?= $(if $(CCACHE),-DCMAKE_CXX_COMPILER_LAUNCHER=$(CCACHE))

.PHONY: all deps build run test test-asan bench format format-check fuzz fuzz-long test-interop install package test-package check-report clean

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

# Installs the programs, launcher entry, icons, manual pages and completion (DESTDIR is honoured).
PREFIX ?= /usr/local
install: build
	cmake --install $(BUILD) --prefix $(PREFIX)

# The Debian package, built by CPack from the same install rules: $(BUILD)/tarvane_<version>_<arch>.deb
package: build
	cd $(BUILD) && cpack -G DEB

# Installs the package on this machine, checks it the way distributions do, and removes it again.
test-package: package
	./scripts/test-package.sh $(BUILD)

# The same tests built with AddressSanitizer and UndefinedBehaviorSanitizer (clang).
test-asan: deps
	./scripts/install-deps.sh --ci
	CC=clang CXX=clang++ cmake -S . -B $(BUILD_ASAN) -G Ninja -DCMAKE_BUILD_TYPE=Debug \
	    -DTARVANE_SANITIZE=ON -DTARVANE_FUZZ=ON -DTARVANE_BENCH=OFF $(CMAKE_FLAGS)
	cmake --build $(BUILD_ASAN) -j $(JOBS)
	cd $(BUILD_ASAN) && ASAN_OPTIONS=detect_leaks=0 UBSAN_OPTIONS=print_stacktrace=1 \
	    ctest --output-on-failure -j $(JOBS)

# The exports opened by real readers (LibreOffice headless, Python's csv); installs LibreOffice's Calc.
test-interop: build
	./scripts/test-interop.sh $(BUILD)

# Runs each fuzzer briefly over its seed corpus (built by test-asan).
fuzz: test-asan
	./scripts/run-fuzzers.sh $(BUILD_ASAN) $(or $(FUZZ_SECONDS),20)

# Each fuzzer for FUZZ_SECONDS (default 600) with two workers, printing executions and coverage;
# FUZZ_TARGETS="fuzz_archive fuzz_ini" limits the run to the targets named.
# Builds only the fuzzers and the core they read with, instrumented, in their own folder.
fuzz-long: deps
	./scripts/install-deps.sh --ci
	CC=clang CXX=clang++ cmake -S . -B $(BUILD_FUZZ) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	    -DTARVANE_SANITIZE=ON -DTARVANE_FUZZ=ON -DTARVANE_BENCH=OFF $(CMAKE_FLAGS)
	cmake --build $(BUILD_FUZZ) -j $(JOBS) --target $$(cd tests/fuzz && ls fuzz_*.cpp | sed 's/\.cpp$$//')
	FUZZ_TARGETS="$(FUZZ_TARGETS)" ./scripts/run-fuzzers.sh --long $(BUILD_FUZZ) $(or $(FUZZ_SECONDS),600)
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
	rm -rf $(BUILD) $(BUILD_ASAN) $(BUILD_REL) $(BUILD_FUZZ)
