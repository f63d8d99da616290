# Front door for newcomers: every target installs what is missing, then builds.
BUILD ?= build
JOBS ?= $(shell nproc)
CMAKE_FLAGS ?=
PACKAGE_BUILD ?= build-package

.PHONY: deps configure build run test bench bench-table package sanitize clang clean

deps:
	bash scripts/install-deps.sh

# The project's own builds treat warnings as errors; a plain `cmake` build does not.
configure: deps
	cmake -S . -B $(BUILD) -DBACKPLOT_WERROR=ON -DBACKPLOT_BUILD_TESTS=ON -DBACKPLOT_BUILD_BENCH=ON $(CMAKE_FLAGS)

build: configure
	cmake --build $(BUILD) -j $(JOBS)

# The first window as soon as possible: only the window's own packages and targets. A
# first configure leaves the tests and benchmarks out (their packages may be missing);
# a build folder that has them keeps them for `make test`.
run:
	bash scripts/install-deps.sh run
	cmake -S . -B $(BUILD) $(if $(wildcard $(BUILD)/CMakeCache.txt),,-DBACKPLOT_BUILD_TESTS=OFF -DBACKPLOT_BUILD_BENCH=OFF) $(CMAKE_FLAGS)
	cmake --build $(BUILD) -j $(JOBS) --target backplot help_pages examples
	$(BUILD)/app/backplot

test: build
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

bench: build
	$(BUILD)/bench/backplot-bench

bench-table: build
	bash scripts/bench-table.sh $(BUILD)

# A Debian package from a release build of its own, without the tests.
package:
	bash scripts/install-deps.sh package
	cmake -S . -B $(PACKAGE_BUILD) -DCMAKE_BUILD_TYPE=Release -DBACKPLOT_BUILD_TESTS=OFF -DBACKPLOT_BUILD_BENCH=OFF $(CMAKE_FLAGS)
	cmake --build $(PACKAGE_BUILD) -j $(JOBS)
	cd $(PACKAGE_BUILD) && cpack -G DEB
	@ls $(PACKAGE_BUILD)/*.deb

sanitize:
	$(MAKE) test BUILD=build-asan CMAKE_FLAGS="-DBACKPLOT_SANITIZE=ON -DCMAKE_BUILD_TYPE=Debug -DBACKPLOT_BUILD_BENCH=OFF"

# The whole tree, tests and benchmarks included, built with Clang and tested.
clang:
	bash scripts/install-deps.sh clang
	$(MAKE) test BUILD=build-clang CMAKE_FLAGS="-DCMAKE_CXX_COMPILER=clang++"

clean:
	rm -rf $(BUILD) build-asan build-clang $(PACKAGE_BUILD)
