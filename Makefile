# Behind ./run and ./test, the commands of every day, which install make first.
export QT_LOGGING_RULES ?= *.debug=false
DATABASE ?= shop/goods.db
JOBS ?= $(shell nproc)

.PHONY: all run test bench bench-network pictures package package-test format tidy fuzz setup release asan clean

all: release

setup:
	@scripts/setup

release: setup
	@cmake --preset release
	@cmake --build --preset release -j $(JOBS)

asan: setup
	@cmake --preset asan
	@cmake --build --preset asan -j $(JOBS)

run: release
	@scripts/run "$(DATABASE)"

# Everything from scratch is quickest in a build of its own.
test: setup
	@cmake --preset check
	@cmake --build --preset check -j $(JOBS)
	@ctest --preset check -j $(JOBS)

bench: release
	@build/release/bin/goods-bench

# What a clerk waits for on a server 0, 1 and 10 ms away, which the bench starts itself.
bench-network: release
	@build/release/bin/goods-bench network

pictures: release
	@scripts/pictures docs/pictures

# Debian packages in build/release/packages.
package:
	@JOBS=$(JOBS) scripts/package

# Installs them into a clean Debian (as root) and uses them there.
package-test: package
	@scripts/package-test

format: setup
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

# FILES="a.cpp b.cpp" looks at these only.
tidy: setup
	@JOBS=$(JOBS) scripts/tidy $(FILES)

fuzz: setup
	@scripts/fuzz 60

clean:
	@rm -rf build
