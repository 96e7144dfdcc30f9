# The two commands of README.md under another name, and the checks before a commit.
.PHONY: demo test asan lint format

demo:
	./demo.sh

test:
	./test.sh

asan:
	cmake --preset asan
	cmake --build --preset asan
	ctest --preset asan

FONTES = $(shell git ls-files '*.cpp' '*.h')

format:
	clang-format -i $(FONTES)

lint:
	clang-format --dry-run --Werror $(FONTES)
	cmake --preset release
	clang-tidy --quiet --extra-arg=-Wno-unknown-warning-option -p build/release $(filter %.cpp,$(FONTES))
