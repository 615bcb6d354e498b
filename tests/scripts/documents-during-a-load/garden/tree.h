void plant_birch(void);
void plant_oak(void);
