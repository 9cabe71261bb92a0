FILES = {}
