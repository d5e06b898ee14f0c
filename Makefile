# SPDX-License-Identifier: GPL-3.0-or-later
# make run   - install what is missing, build (Release) and start Kelvo
# make test  - install what is missing, build, check the layers' includes and
#              run every test
# make bench - the same for the benchmarks, beside the peer tools
# make sanitize - every test again in an AddressSanitizer + UBSan build
.PHONY: run test bench sanitize deps build release clean format

JOBS ?= $(shell nproc)
BUILD ?= build
RELEASE ?= build-release
SANITIZE ?= build-sanitize

# ccache keys on paths relative to the checkout, so every clone and work
# tree of Kelvo shares one cache.
export CCACHE_BASEDIR := $(CURDIR)
export CCACHE_NOHASHDIR := 1

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
	scripts/check-layers
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS) --timeout 300

sanitize: deps
	cmake -S . -B $(SANITIZE) -G Ninja -DKELVO_WERROR=ON -DKELVO_SANITIZE=address,undefined -DKELVO_BUILD_BENCH=OFF
	cmake --build $(SANITIZE) -j $(JOBS)
	@scripts/run-sanitized-tests $(SANITIZE) $(JOBS)

bench:
	@scripts/install-deps --bench
	cmake -S . -B $(RELEASE) -G Ninja -DCMAKE_BUILD_TYPE=Release -DKELVO_BUILD_TESTS=OFF
	cmake --build $(RELEASE) -j $(JOBS)
	@scripts/run-benches $(RELEASE)

format:
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf $(BUILD) $(RELEASE) $(SANITIZE)
