"""Another library's view of pictures.

    pictures.py make FOLDER         makes pictures of many kinds, each in four quarters: red, green, blue, white
    pictures.py look FILE           prints form, size, mode, and the colours in the middle of the four quarters
"""
import sys
from PIL import Image

COLOURS = [(255, 0, 0), (0, 255, 0), (0, 0, 255), (255, 255, 255)]


def quarters(size, mode="RGB"):
    image = Image.new(mode, size)
    width, height = size[0] // 2, size[1] // 2
    for index, colour in enumerate(COLOURS):
        image.paste(Image.new("RGB", size, colour).convert(mode), (index % 2 * width, index // 2 * height))
    return image


def make(folder):
    picture = quarters((1000, 500))
    picture.save(folder + "/plain.bmp")
    picture.save(folder + "/plain.jpg", quality=95)
    picture.save(folder + "/plain.png")
    quarters((4000, 3000)).save(folder + "/photo.jpg", quality=95)
    quarters((8000, 6000)).save(folder + "/photo.png", compress_level=1)
    quarters((3, 2)).resize((30, 20), Image.NEAREST).save(folder + "/small.png")
    picture.convert("L").save(folder + "/grey.jpg", quality=95)
    picture.convert("CMYK").save(folder + "/print.jpg", quality=95)
    picture.convert("P").save(folder + "/colours.png")
    frames = [Image.new("RGB", (1000, 500), "black")] * 2
    picture.convert("P").save(folder + "/film.gif", save_all=True, append_images=[frame.convert("P") for frame in frames])
    clear = picture.convert("RGBA")
    clear.putalpha(Image.new("L", clear.size, 0))
    clear.paste(picture.crop((0, 0, 500, 250)), (0, 0))
    clear.save(folder + "/clear.png")
    exif = Image.Exif()
    exif[0x0112] = 6  # has to be turned to the right
    picture.rotate(90, expand=True).save(folder + "/turned.jpg", quality=95, exif=exif)
    for name in ("photo.jpg", "plain.bmp", "film.gif"):  # too short, with a preview that is whole
        content = open(folder + "/" + name, "rb").read()
        open(folder + "/half-" + name, "wb").write(content[: len(content) // 2 if "gif" not in name else 1500])
    picture.save(folder + "/old.tiff")


def look(path):
    image = Image.open(path)
    colours = image.convert("RGB")
    width, height = image.size
    print(image.format, "%dx%d" % image.size, image.mode)
    for y in (1, 3):
        for x in (1, 3):
            print(*colours.getpixel((x * width // 4, y * height // 4)))


if sys.argv[1] == "make":
    make(sys.argv[2])
elif sys.argv[1] == "look":
    look(sys.argv[2])
