# A thin layer over CMake's presets: each target installs what it needs, builds and does its job.
# PRESET=headless leaves the desktop host out, on a machine that has no toolkit.
PRESET ?= desktop
BUILD  := build/$(PRESET)
PACKAGES_headless := build test
PACKAGES_desktop  := build test desktop desktop-test
BENCH_desktop     := test desktop desktop-test desktop-bench
.DEFAULT_GOAL := help
PREFIX ?= /usr/local
# Not every shell knows what "~" means there.
override PREFIX := $(PREFIX:~/%=$(HOME)/%)
# As it was written: a name may hold what make and the shell would read into it.
override FILE := $(value FILE)
export FILE
.PHONY: help preview named-file test bench format lint sanitize sanitize-desktop thread setup build install uninstall deb

help:
	@echo 'make preview FILE=…   show FILE in the previewer (without a screen: a picture of it)'
	@echo 'make test             build everything and run the tests'
	@echo 'make bench            measure speed and memory beside other programs'
	@echo 'make install          install below PREFIX ($(PREFIX)); DESTDIR is honoured'
	@echo 'make uninstall        take that away again'
	@echo 'make deb              build the Debian package and check it'
	@echo 'make format           format the code'
	@echo 'make lint             check format, static analysis and the pages'"'"' scripts'
	@echo 'make sanitize         run the tests under AddressSanitizer and UBSan'
	@echo 'make sanitize-desktop the same for the tests with a display'
	@echo 'make thread           run the tests that use threads under ThreadSanitizer'
	@echo 'Needed Debian packages are in packages.txt; each target installs those it needs.'

build:
	@scripts/install-packages $(PACKAGES_$(PRESET))
	@cmake --preset $(PRESET) >$(PRESET).log 2>&1 || { cat $(PRESET).log; rm -f $(PRESET).log; exit 1; }
	@rm -f $(PRESET).log
	@cmake --build --preset $(PRESET)

# A window where there is a screen to open it on; else a picture of it, or the page alone.
preview: named-file build
	@scripts/preview $(BUILD) "$$FILE"

# Said before anything is built.
named-file:
	@test -n "$$FILE" || { echo 'Say which file: make preview FILE=notes.md' >&2; exit 2; }

test: build
	@ctest --test-dir $(BUILD) --output-on-failure -j 2

bench:
	@scripts/install-packages build bench $(BENCH_$(PRESET))
	@cmake --preset bench >/dev/null
	@cmake --build --preset bench
	@if [ $(PRESET) = desktop ]; then cmake --preset desktop >/dev/null && \
	  cmake --build --preset desktop --target desktop_bench engine_bench race_bench lumisk; fi
	@scripts/run-benchmarks build/bench $(if $(filter desktop,$(PRESET)),build/desktop)

format:
	@scripts/install-packages lint
	@git ls-files '*.h' '*.cpp' | xargs clang-format -i

lint:
	@scripts/install-packages build test desktop desktop-test lint
	@scripts/lint

sanitize:
	@scripts/install-packages build test
	@cmake --preset sanitize >/dev/null
	@cmake --build --preset sanitize
	@ctest --test-dir build/sanitize --output-on-failure -j 2

# What the toolkit and the engine keep until the end of the program is theirs.
sanitize-desktop:
	@scripts/install-packages build test desktop desktop-test
	@cmake --preset sanitize-desktop >/dev/null
	@cmake --build --preset sanitize-desktop
	@ASAN_OPTIONS=detect_leaks=0 ctest --test-dir build/sanitize-desktop --output-on-failure -L display

thread:
	@scripts/install-packages build test
	@cmake --preset thread >/dev/null
	@cmake --build --preset thread
	@ctest --test-dir build/thread --output-on-failure -j 2 -R 'Folder|Queue|Appearance|PageFile|Controller|Background'

install:
	@scripts/install-packages build desktop
	@cmake --preset desktop -B build/install -DLUMISK_TESTS=OFF -DCMAKE_INSTALL_PREFIX="$(PREFIX)" >/dev/null
	@cmake --build build/install
	@scripts/install-program build/install
	@echo 'Installed below $(DESTDIR)$(PREFIX). "lumisk integrate" makes it your previewer.'

uninstall:
	@scripts/uninstall-program build/install

deb:
	@scripts/install-packages build desktop desktop-test package
	@scripts/build-package build/deb
	@tests/packaging/check-package build/deb/lumisk_*.deb
	@ls build/deb/lumisk_*.deb
