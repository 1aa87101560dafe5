# The commands that matter: `make run` starts Velant, `make test` runs every test.
# Both install what is missing first, so they work on a fresh Debian 12 machine.
BUILD ?= build
JOBS  ?= 2
CMAKE_FLAGS ?=

.PHONY: run test bench build deps clean sanitize

run: build
	./$(BUILD)/velant

test: build
	cd $(BUILD) && xvfb-run -a ctest --output-on-failure -j$(JOBS)

bench: build
	xvfb-run -a ./$(BUILD)/bench/velant_bench

build: deps
	cmake -S . -B $(BUILD) $(CMAKE_FLAGS)
	cmake --build $(BUILD) -j$(JOBS)

# The same suite with AddressSanitizer and UndefinedBehaviorSanitizer.
sanitize:
	$(MAKE) test BUILD=build-asan CMAKE_FLAGS="-DVELANT_SANITIZE=ON -DVELANT_BENCH=OFF -DCMAKE_BUILD_TYPE=Debug"

deps:
	@bash scripts/install-deps

clean:
	rm -rf $(BUILD) build-asan
