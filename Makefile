# SPDX-License-Identifier: GPL-3.0-or-later
# make run   - install what is missing, build (Release) and start Kelvo
# make test  - install what is missing, build and run every test
# make bench - the same for the benchmarks, beside the peer tools
.PHONY: run test bench deps build release clean format

JOBS ?= $(shell nproc)
BUILD ?= build
RELEASE ?= build-release

deps:
	@scripts/install-deps

build: deps
	cmake -S . -B $(BUILD) -G Ninja -DKELVO_WERROR=ON
	cmake --build $(BUILD) -j $(JOBS)

release: deps
	cmake -S . -B $(RELEASE) -G Ninja -DCMAKE_BUILD_TYPE=Release -DKELVO_BUILD_TESTS=OFF
	cmake --build $(RELEASE) -j $(JOBS) --target kelvo

run: release
	@scripts/run-kelvo $(RELEASE)/src/app/kelvo

test: build
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS) --timeout 300

bench:
	@scripts/install-deps --bench
	cmake -S . -B $(RELEASE) -G Ninja -DCMAKE_BUILD_TYPE=Release -DKELVO_BUILD_TESTS=OFF
	cmake --build $(RELEASE) -j $(JOBS)
	@scripts/run-benches $(RELEASE)

format:
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf $(BUILD) $(RELEASE)
