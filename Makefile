# The scripts do the work; these are the same words for habit's sake.
.PHONY: run test build bench lint format
run test build bench lint format:
	@Scripts/$@
