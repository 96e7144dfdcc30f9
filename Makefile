# Shorthands of the two commands in README.md.
.PHONY: demo test
demo:
	./demo.sh
test:
	./test.sh
