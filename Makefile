# Short names for the usual commands; everything is described in CMakeLists.txt and scripts/.
FUZZ_TIME ?= 60
PREFIX ?= /usr/local

.PHONY: build demo test bench fuzz format install reference

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

install: build
	cmake --install build/release --prefix $(PREFIX)

reference:
	./scripts/install-packages.sh check
	./scripts/reference.py
