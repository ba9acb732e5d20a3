# Reads each firmware file DIRECTORY/*.hex with python3-intelhex. Prints its name and "accepted", or its name, "refused"
# and the number of the invalid line. Writes the content of an accepted file to NAME.intelhex.

import pathlib
import re
import sys

import intelhex

for path in sorted(pathlib.Path(sys.argv[1]).glob("*.hex")):
    try:
        image = intelhex.IntelHex(str(path))
        if len(image) == 0:
            raise intelhex.HexReaderError("no data")
        image.write_hex_file(f"{path}.intelhex")
        print(path.name, "accepted")
    except intelhex.HexReaderError as error:
        line = re.search(r"line (\d+)", str(error))
        print(path.name, "refused", line[1] if line else 0)
