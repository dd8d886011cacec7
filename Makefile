# The scripts do the work; these are the same words for habit's sake.
.PHONY: run test build bench soak lint format deb
run test build bench soak lint format:
	@Scripts/$@
deb:
	@Scripts/package
