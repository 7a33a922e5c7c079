# The two commands of the README. Each installs what is missing, configures
# and builds incrementally under build/, and is quick when nothing changed.
.PHONY: test demo sdk deps native windows clean

test:
	@bash scripts/test.sh

demo:
	@bash scripts/demo.sh

sdk:
	@bash scripts/sdk.sh

deps:
	@bash scripts/deps.sh

native:
	@bash scripts/build.sh native

windows:
	@bash scripts/build.sh windows

clean:
	rm -rf build dist
