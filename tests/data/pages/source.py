a, b = 1, 2
if a < b & 3 > 1:
	print("it's <b>&amp;</b>")  # endé  
