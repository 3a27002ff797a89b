// (in progress)
