# The short commands of the house; CMake and Ninja do the work. Each installs the Debian packages that it needs
# and that are missing (scripts/install-deps says what it does).
#
#   make         the importable tree in build/python: PYTHONPATH=build/python is all a script needs
#   make demo    draws the 500 hPa height map of the shipped GRIB file: demo/height500.ps and .png
#   make test    builds and runs all tests, C++ and Python
#   make sanitize    the same tests under the address and undefined-behaviour sanitizers
#   make bench   measures our jobs beside other software and prints one table (BENCH: the names of some)
#   make bench-growth    measures how the cost of a job grows with its size, and draws it, into the documents
#   make bench-peers     installs the other software, and names what cannot be had
#   make coverage    which lines of src/ the tests run; fails below 92 %
#   make soak    works through Python for SECONDS (better 1800 than 60) and looks whether memory and descriptors stay
#   make instructions  counts the instructions of hot operations and compares with the table that is kept
#   make fuzz    feeds the readers of outside bytes damaged input (SECONDS each, 60 unless given)
#   make gallery renders the scripts of examples/gallery to docs/gallery (GALLERY: the names of some)
#   make wheel   makes dist/, the source archive and a wheel with its codec libraries, and tries it in an empty place
#   make install-check  tries `pip install .` in an empty environment
#   make test-extras  tests that wheel with the optional packages: xarray, dask, mypy, cfgrib ...
#   make docs    the reference and the figures in build/docs
#   make tidy    clang-tidy over src/, by .clang-tidy; takes ten minutes on two cores (TIDY: the names of some sources)
#   make format  formats the C++ sources in place; make check-format only compares
#   make clean   removes what all of these made

# The Python that the module is built for and tested with.
PYTHON ?= /usr/bin/python3
# Options for CMake and for the Python test runner. CXX from the environment chooses the compiler.
CMAKE_OPTIONS ?=
PYTEST_OPTIONS ?=
SECONDS ?= 60
# Processes that run tests at a time.
TEST_JOBS ?= 2
# What `make tidy` looks at.
TIDY ?= $(shell git ls-files 'src/*.cpp')
# --renew: keep what is counted now.
COUNT_OPTIONS ?=
FUZZ_CXX ?= $(shell for cxx in clang++ clang++-14 $(CXX); do command -v $$cxx && break; done)

export PYTHON CXX

configure = cmake -S . -B $(1) -G Ninja -DPython3_EXECUTABLE=$$(command -v $(PYTHON)) \
            --log-level=WARNING $(2) $(CMAKE_OPTIONS) >/dev/null
run_python = PYTHONPATH=$(CURDIR)/$(1)/python PYTHONDONTWRITEBYTECODE=1 $(PYTHON)
pytest = -m pytest -q -n $(TEST_JOBS) $(PYTEST_OPTIONS)
demo_map = --domain stereo:90:-25,53,-25,57,43,1.5 --interval 60 --color blue
sources = $(shell git ls-files '*.h' '*.cpp')

.PHONY: all demo test sanitize coverage soak instructions bench bench-growth bench-peers fuzz gallery wheel install-check \
        test-extras docs tidy format check-format clean

all:
	@scripts/install-deps build
	@$(call configure,build)
	@cmake --build build --target package_tree

demo:
	@scripts/install-deps build demo
	@$(call configure,build)
	@cmake --build build --target package_tree
	@mkdir -p demo
	$(call run_python,build) examples/contour_map.py examples/data/height500.grib2 $(demo_map) \
	    --output demo/height500.ps
	scripts/render-page demo/height500.ps demo/height500.png

test:
	@scripts/install-deps build test
	@$(call configure,build)
	@cmake --build build
	scripts/run-shards $(TEST_JOBS) build/yul_tests --gtest_brief=1
	$(call run_python,build) $(pytest) tests/python

sanitize:
	@scripts/install-deps build test
	@$(call configure,build-sanitize,-DYUL_SANITIZE=ON)
	@cmake --build build-sanitize
	scripts/run-shards $(TEST_JOBS) build-sanitize/yul_tests --gtest_brief=1
	scripts/with-sanitizers build-sanitize $(PYTHON) $(pytest) tests/python

bench bench-growth:
	@scripts/install-deps build bench
	@$(call configure,build,-DYUL_BENCH=ON)
	@cmake --build build
	@$(call run_python,build) bench/$(if $(filter bench,$@),run.py $(BENCH),growth.py --record)

bench-peers:
	@scripts/install-deps --each peers

coverage:
	@scripts/install-deps build test coverage
	@$(call configure,build-coverage,-DYUL_COVERAGE=ON)
	@cmake --build build-coverage
	@scripts/coverage build-coverage 92

soak:
	@scripts/install-deps build test
	@$(call configure,build)
	@cmake --build build --target package_tree
	@$(call run_python,build) scripts/soak $(SECONDS)

instructions:
	@scripts/install-deps build instructions
	@$(call configure,build)
	@cmake --build build --target bench_instructions
	@bench/instructions/compare.py build/bench/instructions/operations $(COUNT_OPTIONS)

fuzz:
	@scripts/install-deps build
	@CXX=$(FUZZ_CXX) $(call configure,build-fuzz,-DYUL_FUZZ=ON -DYUL_TESTS=OFF -DYUL_PYTHON=OFF)
	@cmake --build build-fuzz
	@scripts/run-fuzz build-fuzz $(SECONDS)

gallery:
	@scripts/install-deps build demo
	@$(call configure,build)
	@cmake --build build --target package_tree
	@$(call run_python,build) scripts/make_gallery.py docs/gallery $(GALLERY)

wheel:
	@scripts/install-deps build wheel
	@rm -rf dist
	scripts/make-wheel dist
	scripts/try-wheel dist/*.whl

install-check:
	@scripts/install-deps build wheel
	scripts/try-install

test-extras: wheel
	scripts/test-extras dist/*.whl -n $(TEST_JOBS) $(PYTEST_OPTIONS)

docs:
	@scripts/install-deps build docs
	@$(call configure,build)
	@cmake --build build --target package_tree
	@$(call run_python,build) scripts/make_docs.py build/docs $(demo_map)

# Only what is found is shown, not how much of it lies in headers of others. Clang does not know how GCC schedules.
tidy:
	@scripts/install-deps build tidy
	@$(call configure,build)
	@mkdir -p build/tidy
	@sed 's/ -fsched[a-z-]*//g' build/compile_commands.json >build/tidy/compile_commands.json
	@echo $(TIDY) | xargs -n 1 -P $(TEST_JOBS) clang-tidy -p build/tidy --quiet 2>/dev/null
	@echo 'tidy: nothing found'

format:
	@scripts/install-deps ci
	clang-format -i $(sources)

check-format:
	@scripts/install-deps ci
	@clang-format --dry-run -Werror $(sources)

clean:
	rm -rf build build-sanitize build-coverage build-fuzz demo dist
