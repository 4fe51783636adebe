"""Measures what a conversion by zel leaves of model files, by an XML parser of its own."""
