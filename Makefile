# Short names for the usual commands; everything is described in CMakeLists.txt and scripts/.
FUZZ_TIME ?= 60
PREFIX ?= /usr/local

.PHONY: build demo test bench fuzz format install packages reference

build:
	./scripts/install-packages.sh build
	./scripts/build.sh release -DCORVEX_TESTS=OFF

demo:
	./demo.sh

test:
	./test.sh

bench:
	./scripts/install-packages.sh build bench
	./scripts/build.sh bench
	for program in build/bench/bin/bench_*; do $$program || exit 1; done

fuzz:
	./scripts/install-packages.sh build check
	./scripts/fuzz.sh $(FUZZ_TIME)

format:
	git ls-files '*.h' '*.cpp' | xargs clang-format-16 -i

packages:
	./scripts/install-packages.sh build check
	./scripts/make-packages.sh

install:
	./scripts/install-packages.sh build
	./scripts/build.sh release -DCORVEX_TESTS=OFF -DCMAKE_INSTALL_PREFIX=$(PREFIX)
	cmake --install build/release

reference:
	./scripts/install-packages.sh check
	./scripts/reference.py
