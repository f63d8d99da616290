# Front door for newcomers: every target installs what is missing, then builds.
BUILD ?= build
JOBS ?= $(shell nproc)
CMAKE_FLAGS ?=

.PHONY: deps configure build run test bench bench-table sanitize clean

deps:
	bash scripts/install-deps.sh

configure: deps
	cmake -S . -B $(BUILD) $(CMAKE_FLAGS)

build: configure
	cmake --build $(BUILD) -j $(JOBS)

run: build
	$(BUILD)/app/backplot

test: build
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

bench: build
	$(BUILD)/bench/backplot-bench

bench-table: build
	bash scripts/bench-table.sh $(BUILD)

sanitize:
	$(MAKE) test BUILD=build-asan CMAKE_FLAGS="-DBACKPLOT_SANITIZE=ON -DCMAKE_BUILD_TYPE=Debug -DBACKPLOT_BUILD_BENCH=OFF"

clean:
	rm -rf $(BUILD) build-asan
