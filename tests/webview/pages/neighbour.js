window.neighbour = "ran";
