"""Loads the schemas of docs/schema and validates documents against them."""

import json
import pathlib

import jsonschema


def _validator(schema, schemas):
    checker = jsonschema.FormatChecker(formats=["date"])
    try:
        import referencing
    except ImportError:  # jsonschema older than 4.18
        store = {one["$id"]: one for one in schemas}
        resolver = jsonschema.RefResolver.from_schema(schema, store=store)
        return jsonschema.Draft202012Validator(schema, resolver=resolver, format_checker=checker)
    resources = [(one["$id"], referencing.Resource.from_contents(one)) for one in schemas]
    registry = referencing.Registry().with_resources(resources)
    return jsonschema.Draft202012Validator(schema, registry=registry, format_checker=checker)


def _members(error):
    """Returns the paths of the members an error is about: the missing members, or the value itself."""
    path = tuple(error.absolute_path)
    if error.validator == "required":
        return [path + (name,) for name in error.validator_value if name not in error.instance]
    return [path]


def _why(error):
    return "it is missing" if error.validator == "required" else error.message


class Schemas:
    def __init__(self, folder):
        self.by_name = {file.stem: json.loads(file.read_text()) for file in sorted(pathlib.Path(folder).glob("*.json"))}
        for schema in self.by_name.values():
            jsonschema.Draft202012Validator.check_schema(schema)

    def properties(self, name):
        """Returns the properties of the record with this title, from any schema, with their references resolved."""
        for schema in self.by_name.values():
            for one in [*schema.get("$defs", {}).values(), schema]:
                if one.get("title") == name and "properties" in one:
                    return {key: self._resolved(value) for key, value in one["properties"].items()}
        raise KeyError(name)

    def _resolved(self, schema):
        if "$ref" not in schema:
            return schema
        target = self.by_name["shared"]["$defs"][schema["$ref"].rpartition("/$defs/")[2]]
        return {**self._resolved(target), **schema}

    def faults(self, name, document):
        """Returns the invalid members of the document: the path of each, and the reason."""
        errors = _validator(self.by_name[name], self.by_name.values()).iter_errors(document)
        return {member: _why(error) for error in errors for member in _members(error)}
